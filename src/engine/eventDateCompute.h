// The date engine as the screens see it: lookups in the store by event id, then the rules of
// Occurrences.h with the current clock and calendar. An instance is cheap; make one where it is
// needed. It holds its own store handle, so use it on the thread that made it.
#pragma once

#include "calendar/Calendar.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

class eventDateCompute {
public:
    /// Opens the default store (a store that does not open is a fatal stop).
    eventDateCompute();

    Store realm;
    Results<eventInfo> eventInfoData;

    /// A week or month list from its keyed archive; bytes that are no archive stop the program
    /// with "Can't encode data: " and the reader's error.
    std::vector<std::int64_t> decodeDayList(const Bytes& data) const;
    /// The number of days of month `month` of `year`; `month` may run past 12.
    std::int64_t lastDayOfMonth(std::int64_t year, std::int64_t month) const;
    /// Week code (1 Monday ... 7 Sunday) to the calendar's weekday (1 Sunday ... 7 Saturday).
    std::int64_t calendarWeekday(std::int64_t weekCode) const;
    /// Each element composed, in order; one that does not compose is a fatal stop.
    std::vector<Date> datesFromComponents(const std::vector<DateComponents>& list) const;
    /// "Mar 10, 2026" in the user's locale; "" when the numbers do not compose.
    std::string fullDateString(std::int64_t year, std::int64_t month, std::int64_t day) const;
    /// "Mar 10" in the user's locale; "" when the numbers do not compose.
    std::string shortDateString(std::int64_t year, std::int64_t month, std::int64_t day) const;

    /// The coming occurrences of the event with that id; empty for an unknown id or an event of
    /// another type (the type 4 list also serves type 0).
    std::vector<DateComponents> nextEventDateForType1Event(const std::string& eventId) const;
    std::vector<DateComponents> nextEventDateForType2Event(const std::string& eventId) const;
    std::vector<DateComponents> nextEventDateForType3Event(const std::string& eventId) const;
    std::vector<DateComponents> nextEventDateForType4Event(const std::string& eventId) const;

    /// Whether the event falls on the calendar day of `date`; false for an unknown id.
    bool eventHappensOnDate(const std::string& eventId, Date date) const;
    /// The events, in store order, that fall on the day of `date`.
    std::vector<eventInfo> eventsOnDate(Date date) const;
    /// The ids, in store order, of the events that fall on the day of `date`; without a date,
    /// the day of the current time, read afresh for each event.
    std::vector<std::string> eventIdsOnDate(std::optional<Date> date = std::nullopt) const;
    /// The events whose coming occurrences fall on the day `dayOffset` days from today, in store
    /// order, once for each occurrence on that day.
    std::vector<eventInfo> eventsForNextFewDays(std::int64_t dayOffset) const;

private:
    std::optional<eventInfo> eventOfType(const std::string& eventId,
                                         std::initializer_list<std::int64_t> types) const;
};

} // namespace tidemark
