#include "browsing/EventSchedule.h"

#include "base/Fatal.h"
#include "engine/eventDateCompute.h"
#include "records/EventCodes.h"

#include <QTimer>

namespace tidemark {

namespace {

QString dayOffsetText(std::int64_t offset, Date now, const Calendar& calendar,
                      std::string_view pattern) {
    auto day = calendar.dateComponents(kYear | kMonth | kDay, now);
    day.day = checkedAdd(unwrap(day.day), offset);
    return QString::fromStdString(calendar.format(unwrap(calendar.date(day)), pattern));
}

} // namespace

QStringList scheduleDateStrings(std::int64_t eventType, const std::vector<DateComponents>& dates,
                                const Calendar& calendar) {
    const std::string_view pattern =
        repeatTypeOf(eventType) == RepeatType::daily ? "yyyy-MM-dd / HH:mm" : "yyyy-MM-dd";
    QStringList texts;
    for (const auto& element : dates) {
        texts << QString::fromStdString(calendar.format(unwrap(calendar.date(element)), pattern));
    }
    return texts;
}

QString dateStringForDayOffset(std::int64_t offset, Date now, const Calendar& calendar) {
    return dayOffsetText(offset, now, calendar, "yyyy-MM-dd");
}

QString weekdayStringForDayOffset(std::int64_t offset, Date now, const Calendar& calendar) {
    return dayOffsetText(offset, now, calendar, "EEEE");
}

EventScheduleModel::EventScheduleModel(QObject* parent) : QObject(parent) {}

void EventScheduleModel::setEventId(const QString& eventId) {
    if (eventId == eventId_) {
        return;
    }
    eventId_ = eventId;
    emit eventIdChanged();
}

void EventScheduleModel::loadEventSchedule() {
    const eventDateCompute engine;
    const auto id = eventId_.toStdString();
    const auto event = engine.realm.object<eventInfo>(id);
    if (!event) {
        return;
    }
    std::vector<DateComponents> dateInfo;
    switch (repeatTypeOf(*event)) {
    case RepeatType::daily:
        dateInfo = engine.nextEventDateForType1Event(id);
        break;
    case RepeatType::weekly:
        dateInfo = engine.nextEventDateForType2Event(id);
        break;
    case RepeatType::monthly:
        dateInfo = engine.nextEventDateForType3Event(id);
        break;
    case RepeatType::none:
    case RepeatType::yearly:
        dateInfo = engine.nextEventDateForType4Event(id);
        break;
    default:
        return;
    }
    dateStringInfo_ += scheduleDateStrings(event->eventType, dateInfo, Calendar::current());
    emit dateStringInfoChanged();
}

NextFewDaysModel::NextFewDaysModel(QObject* parent) : QObject(parent) {}

void NextFewDaysModel::setNumArrayForLoading(const QVariantList& numbers) {
    numArrayForLoading_ = numbers;
    emit numArrayForLoadingChanged();
}

QString NextFewDaysModel::dateStringForDayOffset(int offset) const {
    return tidemark::dateStringForDayOffset(offset, now(), Calendar::current());
}

QString NextFewDaysModel::weekdayStringForDayOffset(int offset) const {
    return tidemark::weekdayStringForDayOffset(offset, now(), Calendar::current());
}

void NextFewDaysModel::loadNextDayNumber() {
    if (numArrayForLoading_.size() >= 8) {
        return;
    }
    QTimer::singleShot(200, this, [this] {
        numArrayForLoading_ << static_cast<int>(numArrayForLoading_.size());
        emit numArrayForLoadingChanged();
        loadNextDayNumber();
    });
}

} // namespace tidemark
