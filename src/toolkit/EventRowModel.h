// The event row shown by the timeline, the list page and the calendar page's day list: every text
// and mark of the row for one eventId. EventRowData is the pure part (an event, the clock and the
// calendar in, the row's texts out); EventRowModel looks the event up in the store and reads it
// again after every committed write to the events table, so a row follows edits and a deleted
// event's row reports exists == false and draws nothing.
#pragma once

#include "calendar/Calendar.h"
#include "records/Store.h"
#include "records/eventInfo.h"
#include "toolkit/StoredEventModel.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

struct EventRowData {
    bool exists = false;
    QString title;
    /// The colour key, "" when the event has no colour (no mark is drawn then).
    QString colorName;
    /// Symbol names in drawing order: star.fill, bell.badge, repeat, shareplay, each if set.
    QStringList symbols;
    /// "Every day", "Every 3 weeks", ...; "" for an event without a repeat type.
    QString typeText;
    /// For an event that does not repeat: the today text alone, or the count and the day word.
    QString dayCountText;
    QString dayCountNumber; ///< the count as the engine gives it; "" on the today text
    QString dayCountUnit;   ///< the day word, or the today text
    bool isToday = false;
    QString content;
    /// Start date, or "start ~ end" ("∞" without an end) for a repeating event, from the stored
    /// numbers as they stand.
    QString datesText;
    /// The rule in words: the time of a daily rule, the weekdays of a weekly one, the days of a
    /// monthly one, the month-day of a yearly one.
    QString detailsText;
    /// The next-date phrase of a weekly or monthly rule; "" for other events.
    QString nextDateText;
    bool hasMemo = false;
    bool repeating = false;
};

/// The row of `event` at `now`. Reads the stored week and month lists; undecodable bytes stop
/// the program with "Can't decode data: ".
EventRowData eventRowData(const eventInfo& event, Date now, const Calendar& calendar);

/// "%04d-%02d-%02d" of three stored numbers.
QString storedDateText(std::int64_t year, std::int64_t month, std::int64_t day);

class EventRowModel : public tidemark::StoredEventModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString colorName READ colorName NOTIFY changed)
    Q_PROPERTY(QStringList symbols READ symbols NOTIFY changed)
    Q_PROPERTY(QString typeText READ typeText NOTIFY changed)
    Q_PROPERTY(QString dayCountText READ dayCountText NOTIFY changed)
    Q_PROPERTY(QString dayCountNumber READ dayCountNumber NOTIFY changed)
    Q_PROPERTY(QString dayCountUnit READ dayCountUnit NOTIFY changed)
    Q_PROPERTY(bool isToday READ isToday NOTIFY changed)
    Q_PROPERTY(QString content READ content NOTIFY changed)
    Q_PROPERTY(QString datesText READ datesText NOTIFY changed)
    Q_PROPERTY(QString detailsText READ detailsText NOTIFY changed)
    Q_PROPERTY(QString nextDateText READ nextDateText NOTIFY changed)
    Q_PROPERTY(bool hasMemo READ hasMemo NOTIFY changed)
    Q_PROPERTY(bool repeating READ repeating NOTIFY changed)
public:
    explicit EventRowModel(QObject* parent = nullptr);

    const EventRowData& row() const { return row_; }
    QString title() const { return row_.title; }
    QString colorName() const { return row_.colorName; }
    QStringList symbols() const { return row_.symbols; }
    QString typeText() const { return row_.typeText; }
    QString dayCountText() const { return row_.dayCountText; }
    QString dayCountNumber() const { return row_.dayCountNumber; }
    QString dayCountUnit() const { return row_.dayCountUnit; }
    bool isToday() const { return row_.isToday; }
    QString content() const { return row_.content; }
    QString datesText() const { return row_.datesText; }
    QString detailsText() const { return row_.detailsText; }
    QString nextDateText() const { return row_.nextDateText; }
    bool hasMemo() const { return row_.hasMemo; }
    bool repeating() const { return row_.repeating; }

protected:
    void eventLoaded() override;

private:
    EventRowData row_;
};

} // namespace tidemark
