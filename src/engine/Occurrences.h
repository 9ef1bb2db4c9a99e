// The rules of the date engine as pure functions: each takes an event value, the moment that
// counts as "now" and a calendar, and reads nothing else. The store-facing classes
// (eventDateCompute, computeFunc) only look records up and call these; the widget program and the
// benchmarks call them directly.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <vector>

namespace tidemark {

/// A composed date counts as over once it lies a whole day (86400 s) or more before `now`.
inline constexpr double kOverInterval = -86400.0;

/// The coming occurrences of an event by its eventType: 1 daily, 2 weekly, 3 monthly, 4 and 0
/// yearly (a one-off date repeats as an anniversary here); any other type has none. The end
/// cut is applied. Elements are not normalised (day 35, month 14 are legal).
std::vector<DateComponents> occurrenceList(const EventFields& event, Date now,
                                           const Calendar& calendar);

/// The list of one family; empty when the event's type is not the one served (the yearly list
/// serves 4 and 0).
std::vector<DateComponents> dailyOccurrences(const EventFields& event, Date now,
                                             const Calendar& calendar);
std::vector<DateComponents> weeklyOccurrences(const EventFields& event, Date now,
                                              const Calendar& calendar);
std::vector<DateComponents> monthlyOccurrences(const EventFields& event, Date now,
                                               const Calendar& calendar);
std::vector<DateComponents> yearlyOccurrences(const EventFields& event, Date now,
                                              const Calendar& calendar);

/// Whether the event falls on the calendar day of `date` (its time of day is ignored), walking
/// the rule from its start date. Type 0 is its start date only. A walk whose step is 0 or less
/// (a stored interval of -1 or below) never moves forward: it is decided by its first occurrence
/// and answers false where it would otherwise run on. See also kMaxConsecutiveSkippedMonths.
bool eventHappensOnDay(const EventFields& event, Date date, const Calendar& calendar);

/// How many elements of the event's coming occurrences fall on the day `dayOffset` days after
/// the day of `now` (0 today, 1 tomorrow): the half-open interval from that day's midnight
/// (included) to the next midnight (excluded). Doubled codes count twice.
std::int64_t occurrencesOnDayFromToday(const EventFields& event, std::int64_t dayOffset, Date now,
                                       const Calendar& calendar);

/// An occurrence element of a day (year, month, day) and of a moment (with hour and minute),
/// as loose numbers that only composition turns into a date.
DateComponents dayComponents(std::int64_t year, std::int64_t month, std::int64_t day);
DateComponents momentComponents(std::int64_t year, std::int64_t month, std::int64_t day,
                                std::int64_t hour, std::int64_t minute);

/// Helpers shared by the rules.
std::int64_t lastDayOfMonth(std::int64_t year, std::int64_t month, const Calendar& calendar);
/// Week code (1 Monday ... 7 Sunday) to the calendar's weekday (1 Sunday ... 7 Saturday).
std::int64_t calendarWeekday(std::int64_t weekCode);

/// Whether a composed date is still open at `now`: less than a whole day (86400 s) behind it.
inline bool isOpenAt(Date date, Date now) {
    return date.timeIntervalSince(now) > kOverInterval;
}

/// Midnight at the start of the calendar day of `date` (a failed composition is a fatal stop).
Date dayStartOf(Date date, const Calendar& calendar);

/// The day walks of eventHappensOnDay end by themselves once the walk has passed the day asked
/// about. A monthly walk whose code is 29, 30 or 31 can, however, skip every pass when it only
/// ever visits months too short for the code (code 30, step 12, from February). Such a walk gives
/// up and answers false after this many skipped passes in a row. In the Gregorian calendar the
/// months visited repeat within 12 passes and the leap-year pattern within 400 years, so a walk
/// that lands at all lands within 4,800 consecutive passes; the bound never cuts an answer short.
inline constexpr std::int64_t kMaxConsecutiveSkippedMonths = 10000;

} // namespace tidemark
