// The month grid of the calendar control: the 42 days (six weeks) around the month on show,
// starting at the calendar's first weekday, each with what its cell draws. All days of a month
// are answered by one rule batch over the store's events; the grid is recomputed when the month
// changes or a write to the events commits. The compiled rules are kept from one month to the next
// until the events, the calendar or the day change.
#pragma once

#include "records/Observation.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <memory>
#include <vector>

namespace tidemark {

class KeptRuleBatch;
struct eventInfo;

class MonthModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    /// Any moment of the month on show; invalid means the month of now.
    Q_PROPERTY(QDateTime monthToShowDate READ monthToShowDate WRITE setMonthToShowDate NOTIFY
                   monthToShowDateChanged)
    /// The selected day; invalid means today.
    Q_PROPERTY(
        QDateTime selectedDate READ selectedDate WRITE setSelectedDate NOTIFY selectedDateChanged)
    /// The month and year on show in the user's locale ("March 2026", "2026年3月").
    Q_PROPERTY(QString monthTitle READ monthTitle NOTIFY monthToShowDateChanged)
    /// The seven weekday letters of the header, from the first weekday on.
    Q_PROPERTY(QStringList weekdaySymbols READ weekdaySymbols NOTIFY monthToShowDateChanged)
public:
    enum Role {
        DateRole = Qt::UserRole + 1,
        DayTextRole,
        IsCurrentMonthRole,
        IsPastRole,
        IsTodayRole,
        IsSelectedRole,
        ColorNamesRole,
    };
    static constexpr int kCellCount = 42;

    explicit MonthModel(QObject* parent = nullptr);
    ~MonthModel() override;

    QDateTime monthToShowDate() const { return monthToShowDate_; }
    void setMonthToShowDate(const QDateTime& date);
    QDateTime selectedDate() const { return selectedDate_; }
    void setSelectedDate(const QDateTime& date);
    QString monthTitle() const { return monthTitle_; }
    QStringList weekdaySymbols() const { return weekdaySymbols_; }

    /// Moves the month on show by `months` (negative: back); the selection stays.
    Q_INVOKABLE void moveMonth(int months);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Rebuilds the grid from the store now (also done on every change).
    Q_INVOKABLE void refresh();
    /// How many times the grid was built; lets a test see that a store write reached it.
    int buildCount() const { return buildCount_; }

signals:
    void monthToShowDateChanged();
    void selectedDateChanged();

private:
    struct Cell {
        QDateTime date;
        int year = 0, month = 0, day = 0;
        QString dayText;
        bool isCurrentMonth = false;
        bool isPast = false;
        bool isToday = false;
        bool isSelected = false;
        QStringList colorNames;
    };
    void rebuild();
    void learnPalette(std::shared_ptr<const std::vector<eventInfo>> events);
    void updateSelection();

    QDateTime monthToShowDate_;
    QDateTime selectedDate_;
    QString monthTitle_;
    QStringList weekdaySymbols_;
    std::vector<Cell> cells_;
    std::unique_ptr<KeptRuleBatch> batch_;
    /// The colour names of the events of `paletteEvents_`, distinct and sorted, and each event's
    /// place among them.
    std::shared_ptr<const std::vector<eventInfo>> paletteEvents_;
    QStringList palette_;
    std::vector<int> paletteOf_;
    ObservationToken eventsObservation_;
    int buildCount_ = 0;
};

/// The sorted colour names of events on one day: "" and "-" read as "default", then a plain
/// string sort.
QStringList sortedColorNames(const std::vector<std::string>& eventColorStrings);

} // namespace tidemark
