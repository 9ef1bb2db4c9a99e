// What the calendar-file export and import share: the window of days in which a file must say
// exactly what the engine computes, the engine's days of many events in that window, and the
// translation of an event's repeat rule into an RRULE and back. The RRULE is only ever a
// candidate: whoever uses it checks it against the engine's days (sameDaysInWindow) first.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct icaltimetype;
struct icalrecurrencetype;

namespace tidemark {

class RuleBatch;

/// How far ahead a file is checked against the engine, and how far explicit dates reach.
inline constexpr std::int64_t kCheckedYears = 5;

/// The days (as day numbers, see LocalClock.h) from today up to, not including, the same date
/// kCheckedYears later, in the calendar's time zone.
struct DayWindow {
    std::int64_t firstDay = 0;
    std::int64_t endDay = 0;

    static DayWindow from(Date now, const Calendar& calendar);
    bool contains(std::int64_t day) const { return day >= firstDay && day < endDay; }
};

/// The days of the window on which each event of the batch falls by the engine's day query (the
/// dates the calendar marks), ascending, one list per event in the batch's order.
std::vector<std::vector<std::int64_t>>
engineDaysInWindow(const RuleBatch& batch, const DayWindow& window, const Calendar& calendar);
/// Whether the engine puts the event of the batch on that day.
bool engineHasDay(const RuleBatch& batch, std::size_t index, std::int64_t day,
                  const Calendar& calendar);

/// The start of an event as a normalised day number (its numbers composed leniently).
std::int64_t startDayOf(const EventFields& event);
/// The end date of an event as a day number, if it has one.
std::optional<std::int64_t> endDayOf(const EventFields& event);

/// The RRULEs that the app's rules can be: DAILY, WEEKLY by weekdays, MONTHLY by month days
/// (-1 the last), YEARLY on the start's month and day; a step; an end by date or by count.
struct RepeatPattern {
    enum class Frequency { daily, weekly, monthly, yearly };
    Frequency frequency = Frequency::daily;
    std::int64_t interval = 1;
    /// Calendar weekdays, 1 Sunday ... 7 Saturday, without repeats.
    std::vector<int> weekdays;
    /// 1 ... 31, or -1 for the last day, without repeats.
    std::vector<int> monthDays;
    /// The weekday that weeks start on (WKST), 1 Sunday ... 7 Saturday.
    int weekStart = 2;
    /// The last day an instance may fall on, and the number of instances (the start included).
    std::optional<std::int64_t> untilDay;
    std::optional<std::int64_t> count;

    /// The RRULE text without "RRULE:" and without UNTIL and COUNT.
    std::string text() const;
};

/// The pattern of an event's repeat rule, or nothing when it has no RRULE form at all (type 0,
/// codes outside the calendar's days, a step below one, an empty code list). `firstWeekday` is
/// the calendar's. The end date is left to the caller.
std::optional<RepeatPattern> patternOf(const EventFields& event, int firstWeekday);
/// The pattern of a parsed RRULE, or nothing when it has a part the app's rules lack (BYSETPOS,
/// ordinal weekdays, BYHOUR, ...). UNTIL is left to the caller; COUNT is taken.
std::optional<RepeatPattern> patternOf(const icalrecurrencetype& rule);

/// The days of the instances of a pattern (RFC 5545: the start is the first instance, then every
/// date of the rule after it) from `fromDay` up to, not including, `endDay`, ascending; at most
/// `limit` of them.
std::vector<std::int64_t> patternDays(const RepeatPattern& pattern, std::int64_t startDay,
                                      std::int64_t fromDay, std::int64_t endDay,
                                      std::size_t limit = SIZE_MAX);

/// A day number as an iCalendar DATE, and with a wall time as a DATE-TIME without zone.
icaltimetype icalDate(std::int64_t day);
icaltimetype icalWallTime(std::int64_t day, int hour, int minute);
/// The day number of an iCalendar time's date.
std::int64_t dayOfIcalTime(const icaltimetype& time);

/// The colours of events as RFC 7986 colour names (CSS3 names), and back.
std::string cssColorOf(const std::string& colorName);
std::string colorNameOfCss(const std::string& cssName);

} // namespace tidemark
