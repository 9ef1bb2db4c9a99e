#include "widgets/IntentHandler.h"

#include "base/Fatal.h"
#include "engine/Occurrences.h"
#include "records/Defaults.h"
#include "records/EventCodes.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"

#include <algorithm>
#include <limits>

namespace tidemark {

std::optional<EventBasicTypeEnum> eventBasicTypeEnum(std::int64_t rawValue) {
    if (rawValue < 0 || rawValue > 4) {
        return std::nullopt;
    }
    return static_cast<EventBasicTypeEnum>(rawValue);
}

bool widgetListsEvent(const EventFields& event, EventBasicTypeEnum kind) {
    switch (kind) {
    case EventBasicTypeEnum::unknown:
    case EventBasicTypeEnum::allEvents:
        return true;
    case EventBasicTypeEnum::oneOffDates:
        return repeatTypeOf(event) == RepeatType::none;
    case EventBasicTypeEnum::repeating:
        return event.eventRepeatOrNot;
    case EventBasicTypeEnum::starred:
        return event.eventStarOrNot;
    }
    return false;
}

std::vector<eventObjectAtWidget> largeWidgetEvents(const std::vector<eventObjectAtWidget>& events,
                                                   EventBasicTypeEnum kind, Date now,
                                                   const Calendar& calendar) {
    struct Entry {
        double interval;
        const eventObjectAtWidget* event;
    };
    std::vector<Entry> entries;
    for (const auto& event : events) {
        if (!widgetListsEvent(event, kind)) {
            continue;
        }
        double interval = std::numeric_limits<double>::infinity();
        const auto list = occurrenceList(event, now, calendar);
        if (!list.empty()) {
            if (auto date = calendar.date(list.front())) {
                interval = date->timeIntervalSince(now);
            }
        }
        entries.push_back({interval, &event});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.interval < b.interval; });
    std::vector<eventObjectAtWidget> result;
    result.reserve(entries.size());
    for (const auto& entry : entries) {
        result.push_back(*entry.event);
    }
    return result;
}

namespace {

std::string_view textOf(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

std::optional<std::vector<eventObjectAtWidget>> publishedWidgetEvents() {
    DefaultsSuite* suite = DefaultsSuite::named(kSharedSuiteName);
    if (!suite) {
        return std::nullopt;
    }
    const auto value = suite->value(kWidgetDataKey);
    const Bytes* bytes = value ? std::get_if<Bytes>(&*value) : nullptr;
    if (!bytes) {
        return std::nullopt;
    }
    return decodeWidgetEventArray(textOf(*bytes));
}

ObjectCollection<EventBasicInfo> eventSelectedOptions() {
    DefaultsSuite& suite = unwrap(DefaultsSuite::named(kSharedSuiteName));
    const auto value = suite.value(kWidgetDataKey);
    const Bytes* bytes = value ? std::get_if<Bytes>(&*value) : nullptr;
    const Bytes& data = unwrap(bytes);
    JsonDecodeError error;
    const auto events = decodeWidgetEventArray(textOf(data), &error);
    if (!events) {
        fatalStop(std::string(kCantDecodeWidgetData) + error.message);
    }
    return eventBasicInfos(*events);
}

ObjectCollection<EventBasicInfo> eventBasicInfos(const std::vector<eventObjectAtWidget>& events) {
    ObjectCollection<EventBasicInfo> collection;
    collection.items.reserve(events.size());
    for (const auto& event : events) {
        collection.items.push_back({event.eventId, event.eventTitle});
    }
    return collection;
}

void SmallAndMediumWidgetHandler::provideEventSelectedOptionsCollection(
    const IntentForSmallAndMediumWidgetIntent&, const EventOptionsCompletion& completion) const {
    completion(eventSelectedOptions(), std::nullopt);
}

void LockScreenWidgetHandler::provideEventSelectedOptionsCollection(
    const IntentForLockScreenWidgetIntent&, const EventOptionsCompletion& completion) const {
    completion(eventSelectedOptions(), std::nullopt);
}

WidgetIntentHandler IntentHandler::handler(const WidgetIntent& intent) const {
    if (std::holds_alternative<IntentForLockScreenWidgetIntent>(intent)) {
        return LockScreenWidgetHandler{};
    }
    return SmallAndMediumWidgetHandler{};
}

} // namespace tidemark
