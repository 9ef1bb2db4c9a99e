// The C++ side of the calendar page: its appearance hook runs the first-launch work and fills
// DataStore.todayDataForUI with the events of the selected day.
#pragma once

#include "shell/DataStore.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>

namespace tidemark {

class CalendarPage : public QObject {
    Q_OBJECT
    /// The selected day; invalid means "now".
    Q_PROPERTY(QDateTime todayDateForDatePickerDefault READ todayDateForDatePickerDefault WRITE
                   setTodayDateForDatePickerDefault NOTIFY todayDateForDatePickerDefaultChanged)
public:
    explicit CalendarPage(DataStore* dataStore, QObject* parent = nullptr);

    QDateTime todayDateForDatePickerDefault() const { return selected_; }
    void setTodayDateForDatePickerDefault(const QDateTime& date);

    /// The appearance hook: first-launch work when it is due, then a queued refresh of the
    /// day's events.
    Q_INVOKABLE void appeared();

signals:
    void todayDateForDatePickerDefaultChanged();
    /// The first-launch work ran in this appearance.
    void firstLaunchWorkDone();

private:
    void refreshTodayData();

    QPointer<DataStore> dataStore_;
    QDateTime selected_;
};

} // namespace tidemark
