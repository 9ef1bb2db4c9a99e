#include "shell/CalendarPage.h"

#include "calendar/Calendar.h"
#include "engine/eventDateCompute.h"
#include "shell/FirstLaunch.h"

#include <QMetaObject>

namespace tidemark {

CalendarPage::CalendarPage(DataStore* dataStore, QObject* parent)
    : QObject(parent), dataStore_(dataStore) {}

void CalendarPage::setTodayDateForDatePickerDefault(const QDateTime& date) {
    if (date == selected_) {
        return;
    }
    selected_ = date;
    emit todayDateForDatePickerDefaultChanged();
    QMetaObject::invokeMethod(this, &CalendarPage::refreshTodayData, Qt::QueuedConnection);
}

void CalendarPage::appeared() {
    if (runFirstLaunchWorkIfNeeded()) {
        emit firstLaunchWorkDone();
    }
    // A task on the main thread's queue; each appearance starts a new one and the last wins.
    QMetaObject::invokeMethod(this, &CalendarPage::refreshTodayData, Qt::QueuedConnection);
}

void CalendarPage::refreshTodayData() {
    if (!dataStore_) {
        return;
    }
    std::optional<Date> day;
    if (selected_.isValid()) {
        day = Date{static_cast<double>(selected_.toMSecsSinceEpoch()) / 1000.0};
    }
    QStringList ids;
    for (const auto& id : eventDateCompute().eventIdsOnDate(day)) {
        ids << QString::fromStdString(id);
    }
    dataStore_->setTodayDataForUI(ids);
}

} // namespace tidemark
