#include "browsing/EventViewModel.h"

#include "browsing/TimelineList.h"
#include "calendar/Calendar.h"
#include "platform/linux/QtDispatcher.h"
#include "records/realmDataFunc.h"

#include <QVariantMap>
#include <algorithm>
#include <unordered_map>

namespace tidemark {

EventViewModel::EventViewModel(QObject* parent) : QObject(parent) {
    observations_.push_back(rows_.observe([this] { reload(); }, queuedOn(this)));
    observations_.push_back(data_.observe([this] { emit changed(); }, queuedOn(this)));
    reload();
}

QString EventViewModel::todayString() const {
    return QString::fromStdString(Calendar::current().format(now(), "yyyy-MM-dd"));
}

QString EventViewModel::todayStringHour() const {
    return QString::fromStdString(Calendar::current().format(now(), "HH"));
}

QVariantList EventViewModel::events() const {
    const auto events = data_.snapshot();
    std::unordered_map<std::string, const eventInfo*> byId;
    for (const auto& event : events) {
        byId.emplace(event.eventId, &event);
    }
    QVariantList list;
    for (const auto& item : filteredEventList(events, TimelineFilter{})) {
        list << QVariantMap{
            {QStringLiteral("eventId"), QString::fromStdString(item.eventId)},
            {QStringLiteral("title"), QString::fromStdString(byId.at(item.eventId)->eventTitle)}};
    }
    return list;
}

void EventViewModel::rebuildDateData(int range) {
    rebuildDayRows(range);
    reload();
}

void EventViewModel::reload() {
    auto rows = rows_.snapshot();
    std::sort(rows.begin(), rows.end(),
              [](const auto& a, const auto& b) { return a.dateString < b.dateString; });
    QStringList days;
    for (const auto& row : rows) {
        const auto& s = row.dateString;
        days << (s.size() == 8 ? QString::fromStdString(s.substr(0, 4) + "-" + s.substr(4, 2) +
                                                        "-" + s.substr(6, 2))
                               : QString::fromStdString(s));
    }
    dateData_ = days;
    emit changed();
}

} // namespace tidemark
