#include "engine/eventDateCompute.h"

#include "base/Fatal.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "records/DayListArchive.h"

#include <algorithm>

namespace tidemark {

namespace {

std::optional<Date> composeDay(std::int64_t year, std::int64_t month, std::int64_t day) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    return Calendar::current().date(c);
}

/// The occurrence list of one event (its type already checked), through the engine's batch.
std::vector<DateComponents> occurrencesOf(const eventInfo& event) {
    const Calendar& calendar = Calendar::current();
    return RuleBatch(std::vector<const EventFields*>{&event}, calendar).occurrences(0, now());
}

} // namespace

eventDateCompute::eventDateCompute() : realm(Store::open()), eventInfoData() {}

std::vector<std::int64_t> eventDateCompute::decodeDayList(const Bytes& data) const {
    return decodeDayListArchive(data, kCantEncodeData);
}

std::int64_t eventDateCompute::lastDayOfMonth(std::int64_t year, std::int64_t month) const {
    return tidemark::lastDayOfMonth(year, month, Calendar::current());
}

std::int64_t eventDateCompute::calendarWeekday(std::int64_t weekCode) const {
    return tidemark::calendarWeekday(weekCode);
}

std::vector<Date>
eventDateCompute::datesFromComponents(const std::vector<DateComponents>& list) const {
    const Calendar& calendar = Calendar::current();
    std::vector<Date> dates;
    dates.reserve(list.size());
    for (const DateComponents& element : list) {
        dates.push_back(unwrap(calendar.date(element)));
    }
    return dates;
}

std::string eventDateCompute::fullDateString(std::int64_t year, std::int64_t month,
                                             std::int64_t day) const {
    const std::optional<Date> date = composeDay(year, month, day);
    return date ? Calendar::current().formatAbbreviated(*date, true) : std::string();
}

std::string eventDateCompute::shortDateString(std::int64_t year, std::int64_t month,
                                              std::int64_t day) const {
    const std::optional<Date> date = composeDay(year, month, day);
    return date ? Calendar::current().formatAbbreviated(*date, false) : std::string();
}

std::optional<eventInfo>
eventDateCompute::eventOfType(const std::string& eventId,
                              std::initializer_list<std::int64_t> types) const {
    std::optional<eventInfo> event = realm.object<eventInfo>(eventId);
    if (!event || std::find(types.begin(), types.end(), event->eventType) == types.end()) {
        return std::nullopt;
    }
    return event;
}

std::vector<DateComponents>
eventDateCompute::nextEventDateForType1Event(const std::string& eventId) const {
    const auto event = eventOfType(eventId, {1});
    return event ? occurrencesOf(*event) : std::vector<DateComponents>{};
}

std::vector<DateComponents>
eventDateCompute::nextEventDateForType2Event(const std::string& eventId) const {
    const auto event = eventOfType(eventId, {2});
    return event ? occurrencesOf(*event) : std::vector<DateComponents>{};
}

std::vector<DateComponents>
eventDateCompute::nextEventDateForType3Event(const std::string& eventId) const {
    const auto event = eventOfType(eventId, {3});
    return event ? occurrencesOf(*event) : std::vector<DateComponents>{};
}

std::vector<DateComponents>
eventDateCompute::nextEventDateForType4Event(const std::string& eventId) const {
    const auto event = eventOfType(eventId, {4, 0});
    return event ? occurrencesOf(*event) : std::vector<DateComponents>{};
}

bool eventDateCompute::eventHappensOnDate(const std::string& eventId, Date date) const {
    const Calendar& calendar = Calendar::current();
    // The day is composed before the lookup, so a date that does not compose stops the program
    // even for an unknown id.
    dayStartOf(date, calendar);
    const std::optional<eventInfo> event = realm.object<eventInfo>(eventId);
    return event &&
           RuleBatch(std::vector<const EventFields*>{&*event}, calendar).happensOnDay(0, date);
}

std::vector<eventInfo> eventDateCompute::eventsOnDate(Date date) const {
    std::vector<eventInfo> events = eventInfoData.snapshot();
    if (events.empty()) {
        return {};
    }
    const Calendar& calendar = Calendar::current();
    dayStartOf(date, calendar);
    std::vector<eventInfo> result;
    for (const std::size_t index : RuleBatch(events, calendar).indicesOnDate(date)) {
        result.push_back(std::move(events[index]));
    }
    return result;
}

std::vector<std::string> eventDateCompute::eventIdsOnDate(std::optional<Date> date) const {
    // The store's kept result set itself: the calendar page asks this on every appearance.
    const auto kept = eventInfoData.shared();
    const std::vector<eventInfo>& events = *kept;
    if (events.empty()) {
        return {};
    }
    const Calendar& calendar = Calendar::current();
    const RuleBatch batch(events, calendar);
    if (date) {
        dayStartOf(*date, calendar);
        return batch.eventIdsOnDate(*date);
    }
    // Without a date the clock is read once per event, so a query that runs across midnight
    // answers the later events for the new day.
    std::vector<std::string> ids;
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (batch.happensOnDay(i, now())) {
            ids.push_back(events[i].eventId);
        }
    }
    return ids;
}

std::vector<eventInfo> eventDateCompute::eventsForNextFewDays(std::int64_t dayOffset) const {
    // The clock is read once for the whole query: every event's list and every day boundary
    // are taken from the same moment.
    const Date moment = now();
    const Calendar& calendar = Calendar::current();
    checkedAdd(dayOffset, 1); // the day after the offset must exist even when there are no events
    std::vector<eventInfo> result;
    for (const eventInfo& event : eventInfoData.snapshot()) {
        const std::int64_t inside = occurrencesOnDayFromToday(event, dayOffset, moment, calendar);
        for (std::int64_t i = 0; i < inside; ++i) {
            result.push_back(event);
        }
    }
    return result;
}

} // namespace tidemark
