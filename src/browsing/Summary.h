// The summary card of one event (summaryView) and its rule box
// (summaryViewSubPageForMonthlyAndWeeklyEvent): the date line, the over text and the box that
// spells out the repeat rule, with the week grid and the month grid. The month grid always shows
// the month of today, not the month of the event, so a last-day rule (code 99) marks the 30th in
// April and the 31st in May. The pure functions take the moment and the calendar; the two models
// read them afresh on every reload.
#pragma once

#include "calendar/Calendar.h"
#include "editing/RuleSelection.h"
#include "records/Store.h"
#include "records/eventInfo.h"
#include "toolkit/StoredEventModel.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <vector>

namespace tidemark {

/// The number of days of the current month plus one (32 in March): the upper bound of the month
/// grid's day range. 30 + 1 when the month's end does not compose.
std::int64_t daysInThisMonthPlusOne(Date now, const Calendar& calendar);
/// The weekday (1 Sunday ... 7 Saturday) of the first of the current month; kNoFirstWeekday
/// when it does not compose.
inline constexpr std::int64_t kNoFirstWeekday = 99;
std::int64_t firstWeekdayOfThisMonth(Date now, const Calendar& calendar);
/// The abbreviated name of a weekday (1 Sunday ... 7 Saturday) in the user's locale; "" when no
/// date with that weekday composes.
QString weekdayShortName(std::int64_t weekday, const Calendar& calendar);
/// The codes that a grid marks: the stored codes, and with 99 among them the last day of the
/// current month (`daysPlusOne` − 1) once.
std::vector<std::int64_t> codesForGrid(std::vector<std::int64_t> codes, std::int64_t daysPlusOne);
/// The weekday words of the week codes held, in the fixed order 1 (Monday) to 7, each followed by
/// a blank.
QString weekNamesText(const std::vector<std::int64_t>& codes);
/// "%02d" and the day word for each month code other than 99, in stored order; then the last-day
/// text if 99 is held.
QString monthDaysText(const std::vector<std::int64_t>& codes);
/// The date line: "start ~ end" ("∞" without an end) for a repeating event of a repeat type, the
/// start alone for type 0, "" otherwise; from the stored numbers as they stand.
QString summaryDateLine(const EventFields& event);

/// Everything the rule box draws for a week (type 2) or month (type 3) list.
struct RuleBoxData {
    /// The week grid: the seven labels, Monday first, and which cells are selected.
    QStringList weekLabels;
    std::vector<bool> weekSelected;
    /// The month grid of the current month: seven weekday names from Sunday, the empty cells
    /// before day 1, the number of day cells and the selected days. No grid when the first of the
    /// month does not compose.
    bool showsMonthGrid = false;
    QStringList monthHeader;
    std::int64_t leadingBlanks = 0;
    std::int64_t dayCells = 0;
    std::vector<std::int64_t> selectedDays;
    /// weekNamesText or monthDaysText.
    QString text;
};

/// The rule box of a stored list; `eventType` other than 2 or 3 gives an empty box.
RuleBoxData ruleBoxData(std::int64_t eventType, const std::vector<std::int64_t>& codes, Date now,
                        const Calendar& calendar);

/// The rule box for a raw list: `eventType` 2 (week codes) or 3 (month codes) and the stored
/// archive of the list. Undecodable bytes stop the program as every stored list does.
class SummaryRuleBoxModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int eventType READ eventType WRITE setEventType NOTIFY inputChanged)
    Q_PROPERTY(
        QByteArray eventArrayData READ eventArrayData WRITE setEventArrayData NOTIFY inputChanged)
    Q_PROPERTY(QStringList weekLabels READ weekLabels NOTIFY changed)
    Q_PROPERTY(QVariantList weekSelected READ weekSelected NOTIFY changed)
    Q_PROPERTY(bool showsMonthGrid READ showsMonthGrid NOTIFY changed)
    Q_PROPERTY(QStringList monthHeader READ monthHeader NOTIFY changed)
    Q_PROPERTY(int leadingBlanks READ leadingBlanks NOTIFY changed)
    Q_PROPERTY(int dayCells READ dayCells NOTIFY changed)
    Q_PROPERTY(QVariantList selectedDays READ selectedDays NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
public:
    explicit SummaryRuleBoxModel(QObject* parent = nullptr);

    int eventType() const { return eventType_; }
    void setEventType(int eventType);
    QByteArray eventArrayData() const { return eventArrayData_; }
    void setEventArrayData(const QByteArray& data);

    QStringList weekLabels() const { return box_.weekLabels; }
    QVariantList weekSelected() const;
    bool showsMonthGrid() const { return box_.showsMonthGrid; }
    QStringList monthHeader() const { return box_.monthHeader; }
    int leadingBlanks() const { return static_cast<int>(box_.leadingBlanks); }
    int dayCells() const { return static_cast<int>(box_.dayCells); }
    QVariantList selectedDays() const;
    QString text() const { return box_.text; }

    /// Works the box out again for the current day.
    Q_INVOKABLE void reload();

signals:
    void inputChanged();
    void changed();

private:
    int eventType_ = 0;
    QByteArray eventArrayData_;
    RuleBoxData box_;
};

/// The summary card of one stored event; follows store commits, and reads as gone
/// (exists == false) once the event is deleted.
class SummaryViewModel : public tidemark::StoredEventModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString dateLine READ dateLine NOTIFY changed)
    Q_PROPERTY(bool isOver READ isOver NOTIFY changed)
    Q_PROPERTY(int eventType READ eventType NOTIFY changed)
    Q_PROPERTY(bool repeating READ repeating NOTIFY changed)
    Q_PROPERTY(QByteArray ruleArchive READ ruleArchive NOTIFY changed)
    Q_PROPERTY(QString ruleText READ ruleText NOTIFY changed)
public:
    explicit SummaryViewModel(QObject* parent = nullptr);

    QString dateLine() const { return dateLine_; }
    bool isOver() const { return isOver_; }
    int eventType() const { return eventType_; }
    bool repeating() const { return repeating_; }
    /// The stored week list of a weekly event, the month list of a monthly one.
    QByteArray ruleArchive() const { return ruleArchive_; }
    /// The box's text for a one-off (full date), daily (time) or yearly (short date) event.
    QString ruleText() const { return ruleText_; }

protected:
    void eventLoaded() override;

private:
    QString dateLine_;
    bool isOver_ = false;
    int eventType_ = 0;
    bool repeating_ = false;
    QByteArray ruleArchive_;
    QString ruleText_;
};

} // namespace tidemark
