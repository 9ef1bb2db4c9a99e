// The rules of the date engine, written as literal walks: one function per rule, in the order in
// which the rule reads. A faster implementation may sit behind the same entry points; these walks
// stay as its reference.
//
// Every list reads the clock once: `now` is passed in, and every "interval since now" of the rules
// is measured against that one moment.
#include "engine/Occurrences.h"

#include "base/Fatal.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"

#include <algorithm>
#include <optional>

namespace tidemark {

namespace {

std::optional<Date> composeStart(const EventFields& event, const Calendar& calendar) {
    return calendar.date(dayComponents(event.eventStartDateYear, event.eventStartDateMonth,
                                       event.eventStartDateDay));
}

/// The series' step in its own unit: 1, or the stored interval read as units skipped.
std::int64_t customStep(const EventFields& event) {
    return checkedAdd(event.eventDateWhenCustomizeRepeatTimes, 1);
}

/// Whole units (days or weeks) cut towards zero from a number of seconds, the way the rules
/// divide: by 60, 60, 24 (and 7) one after another in floating point.
std::int64_t wholeDays(double seconds) {
    return truncatingToInt(seconds / 60 / 60 / 24);
}
std::int64_t wholeWeeks(double seconds) {
    return truncatingToInt(seconds / 60 / 60 / 24 / 7);
}

/// The end cut: every element that lies after the end moment (the end date at the event's time
/// of day) is removed, by value, one equal element for each such element of the original list.
void applyEndCut(std::vector<DateComponents>& result, const EventFields& event,
                 const Calendar& calendar) {
    if (!event.eventHaveEndDateOrNot) {
        return;
    }
    const std::vector<DateComponents> copy = result;
    for (const DateComponents& element : copy) {
        const Date endMoment = unwrap(calendar.date(
            momentComponents(event.eventEndDateYear, event.eventEndDateMonth, event.eventEndDateDay,
                             event.eventDateWhenEveryDayHour, event.eventDateWhenEveryDayMin)));
        const Date elementDate = unwrap(calendar.date(element));
        if (endMoment.timeIntervalSince(elementDate) < 0) {
            const auto found = std::find(result.begin(), result.end(), element);
            if (found != result.end()) {
                result.erase(found);
            }
        }
    }
}

// ---------------------------------------------------------------------------------------------
// Daily list

std::vector<DateComponents> dailyPlain(const EventFields& event, Date now,
                                       const Calendar& calendar) {
    std::vector<DateComponents> result;
    const std::int64_t hour = event.eventDateWhenEveryDayHour;
    const std::int64_t minute = event.eventDateWhenEveryDayMin;
    const Date startMoment =
        unwrap(calendar.date(momentComponents(event.eventStartDateYear, event.eventStartDateMonth,
                                              event.eventStartDateDay, hour, minute)));
    if (startMoment.timeIntervalSince(now) > 0) {
        for (std::int64_t i = 0; i <= 99; ++i) {
            result.push_back(momentComponents(event.eventStartDateYear, event.eventStartDateMonth,
                                              checkedAdd(event.eventStartDateDay, i), hour,
                                              minute));
        }
        return result;
    }
    const DateComponents today = calendar.dateComponents(kEngineComponents, now);
    const std::int64_t year = unwrap(today.year);
    const std::int64_t month = unwrap(today.month);
    const std::int64_t day = unwrap(today.day);
    const Date todayMoment =
        unwrap(calendar.date(momentComponents(year, month, day, hour, minute)));
    // Today's time still to come: today first. Passed, or this very moment: tomorrow first.
    const std::int64_t first = todayMoment.timeIntervalSince(now) > 0 ? 0 : 1;
    for (std::int64_t i = first; i <= 99; ++i) {
        result.push_back(momentComponents(year, month, checkedAdd(day, i), hour, minute));
    }
    return result;
}

std::vector<DateComponents> dailyCustom(const EventFields& event, Date now,
                                        const Calendar& calendar) {
    std::vector<DateComponents> result;
    const std::int64_t hour = event.eventDateWhenEveryDayHour;
    const std::int64_t minute = event.eventDateWhenEveryDayMin;
    const std::int64_t step = customStep(event);
    const std::optional<Date> startMoment =
        calendar.date(momentComponents(event.eventStartDateYear, event.eventStartDateMonth,
                                       event.eventStartDateDay, hour, minute));
    // A start that does not compose counts as "now" here rather than stopping.
    const double interval = startMoment ? startMoment->timeIntervalSince(now) : 0.0;
    if (interval > 0) {
        for (std::int64_t i = 0; i <= 99; ++i) {
            const std::int64_t day = checkedAdd(event.eventStartDateDay, checkedMul(i, step));
            result.push_back(momentComponents(event.eventStartDateYear, event.eventStartDateMonth,
                                              day, hour, minute));
        }
        return result;
    }
    // The grid stays anchored at the start: the first element is the first grid point after the
    // whole days that have passed.
    const std::int64_t daysPassed = checkedSub(0, wholeDays(interval));
    for (std::int64_t i = 1; i <= 99; ++i) {
        const std::int64_t k = checkedAdd(checkedDiv(daysPassed, step), i);
        const std::int64_t day = checkedAdd(event.eventStartDateDay, checkedMul(k, step));
        result.push_back(momentComponents(event.eventStartDateYear, event.eventStartDateMonth, day,
                                          hour, minute));
    }
    return result;
}

// ---------------------------------------------------------------------------------------------
// Monthly list

struct MonthLimits {
    std::int64_t monthLoop;
    std::int64_t codeLoop;
};

MonthLimits monthLimits(bool customised, bool startOpen) {
    if (!customised) {
        return startOpen ? MonthLimits{5, 5} : MonthLimits{5, 100};
    }
    return MonthLimits{100, 5};
}

} // namespace

// ---------------------------------------------------------------------------------------------
// Helpers

DateComponents dayComponents(std::int64_t year, std::int64_t month, std::int64_t day) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    return c;
}

DateComponents momentComponents(std::int64_t year, std::int64_t month, std::int64_t day,
                                std::int64_t hour, std::int64_t minute) {
    DateComponents c = dayComponents(year, month, day);
    c.hour = hour;
    c.minute = minute;
    return c;
}

std::int64_t lastDayOfMonth(std::int64_t year, std::int64_t month, const Calendar& calendar) {
    const Date date = unwrap(calendar.date(dayComponents(year, checkedAdd(month, 1), 0)));
    return unwrap(calendar.dateComponents(kYear | kMonth | kDay, date).day);
}

std::int64_t calendarWeekday(std::int64_t weekCode) {
    return weekCode == 7 ? 1 : checkedAdd(weekCode, 1);
}

Date dayStartOf(Date date, const Calendar& calendar) {
    const DateComponents parts = calendar.dateComponents(kYear | kMonth | kDay, date);
    return unwrap(
        calendar.date(dayComponents(unwrap(parts.year), unwrap(parts.month), unwrap(parts.day))));
}

// ---------------------------------------------------------------------------------------------
// Occurrence lists

std::vector<DateComponents> dailyOccurrences(const EventFields& event, Date now,
                                             const Calendar& calendar) {
    if (repeatTypeOf(event) != RepeatType::daily) {
        return {};
    }
    std::vector<DateComponents> result = event.eventHaveCustomizeInterval
                                             ? dailyCustom(event, now, calendar)
                                             : dailyPlain(event, now, calendar);
    applyEndCut(result, event, calendar);
    return result;
}

std::vector<DateComponents> weeklyOccurrences(const EventFields& event, Date now,
                                              const Calendar& calendar) {
    if (repeatTypeOf(event) != RepeatType::weekly) {
        return {};
    }
    std::vector<DateComponents> result;
    const Date startDate = unwrap(composeStart(event, calendar));
    const DateComponents startParts = calendar.dateComponents(kEngineComponents, startDate);
    const std::int64_t startWeek = unwrap(startParts.weekOfYear);
    const std::vector<std::int64_t> codes = decodeDayListArchive(event.eventDateWhenEveryWeek);
    const bool startOpen = isOpenAt(startDate, now);
    const bool customised = event.eventHaveCustomizeInterval;
    const std::int64_t stepWeeks = customised ? customStep(event) : 1;
    const std::int64_t unit = customised ? checkedMul(stepWeeks, 7) : 7;

    // Grouped by code in stored order; each group ascends. The list is not sorted by date.
    for (const std::int64_t code : codes) {
        // The start's calendar year with the start's week number: near the turn of the year this
        // can name a week of the wrong year, and nothing corrects it.
        DateComponents first;
        first.year = event.eventStartDateYear;
        first.weekOfYear = startWeek;
        first.weekday = calendarWeekday(code);
        const Date firstDay = unwrap(calendar.date(first));
        const DateComponents firstParts = calendar.dateComponents(kEngineComponents, firstDay);
        const std::int64_t year = unwrap(firstParts.year);
        const std::int64_t month = unwrap(firstParts.month);
        const std::int64_t day = unwrap(firstParts.day);

        if (startOpen) {
            for (std::int64_t i = 0; i <= 19; ++i) {
                const DateComponents candidate =
                    dayComponents(year, month, checkedAdd(day, checkedMul(i, unit)));
                const Date date = unwrap(calendar.date(candidate));
                if (isOpenAt(date, now) && date.timeIntervalSince(startDate) > kOverInterval) {
                    result.push_back(candidate);
                }
            }
            continue;
        }

        const std::int64_t weeksPassed = checkedSub(0, wholeWeeks(firstDay.timeIntervalSince(now)));
        for (std::int64_t i = 0; i <= 19; ++i) {
            std::int64_t candidateDay = 0;
            if (!customised) {
                candidateDay = checkedAdd(day, checkedMul(checkedAdd(i, weeksPassed), 7));
            } else {
                const std::int64_t offset = checkedMul(checkedDiv(weeksPassed, stepWeeks), unit);
                candidateDay = checkedAdd(checkedAdd(day, offset), checkedMul(unit, i));
            }
            const DateComponents candidate = dayComponents(year, month, candidateDay);
            if (isOpenAt(unwrap(calendar.date(candidate)), now)) {
                result.push_back(candidate);
            }
        }
    }
    applyEndCut(result, event, calendar);
    return result;
}

std::vector<DateComponents> monthlyOccurrences(const EventFields& event, Date now,
                                               const Calendar& calendar) {
    if (repeatTypeOf(event) != RepeatType::monthly) {
        return {};
    }
    std::vector<DateComponents> result;
    const Date startDate = unwrap(composeStart(event, calendar));
    const bool startOpen = isOpenAt(startDate, now);
    const bool customised = event.eventHaveCustomizeInterval;
    const std::vector<std::int64_t> codes = decodeDayListArchive(event.eventDateWhenEveryMonth);
    const std::int64_t times = event.eventDateWhenCustomizeRepeatTimes;
    const DateComponents today = calendar.dateComponents(kEngineComponents, now);
    const std::int64_t todayYear = unwrap(today.year);
    const std::int64_t todayMonth = unwrap(today.month);

    // With a customised interval and a past start, the grid restarts at today's month rather
    // than at the start month.
    std::int64_t monthsPassed = 0;
    if (customised && !startOpen) {
        monthsPassed = checkedAdd(checkedMul(checkedSub(todayYear, event.eventStartDateYear), 12),
                                  checkedSub(todayMonth, event.eventStartDateMonth));
    }
    const MonthLimits limits = monthLimits(customised, startOpen);
    const auto count = [&] { return static_cast<std::int64_t>(result.size()); };

    for (std::int64_t i = 0; i <= 99; ++i) {
        if (count() > limits.monthLoop) {
            break;
        }
        std::int64_t y = 0;
        std::int64_t m = 0;
        if (!customised) {
            y = startOpen ? event.eventStartDateYear : todayYear;
            m = checkedAdd(startOpen ? event.eventStartDateMonth : todayMonth, i);
        } else {
            y = event.eventStartDateYear;
            m = checkedAdd(
                checkedAdd(event.eventStartDateMonth, checkedMul(i, checkedAdd(times, 1))),
                monthsPassed);
        }
        for (const std::int64_t code : codes) {
            if (count() > limits.codeLoop) {
                break;
            }
            DateComponents candidate;
            if (code == kLastDayOfMonthCode) {
                candidate = dayComponents(y, m, lastDayOfMonth(y, m, calendar));
            } else if (code == 29 || code == 30 || code == 31) {
                if (lastDayOfMonth(y, m, calendar) < code) {
                    continue; // the month is too short: no occurrence, never moved to its end
                }
                candidate = dayComponents(y, m, code);
            } else {
                candidate = dayComponents(y, m, code);
            }
            // No test against the start date: a future start still yields the months before it.
            if (isOpenAt(unwrap(calendar.date(candidate)), now)) {
                result.push_back(candidate);
            }
        }
    }
    applyEndCut(result, event, calendar);
    return result;
}

std::vector<DateComponents> yearlyOccurrences(const EventFields& event, Date now,
                                              const Calendar& calendar) {
    if (repeatTypeOf(event) != RepeatType::yearly && repeatTypeOf(event) != RepeatType::none) {
        return {};
    }
    std::vector<DateComponents> result;
    const Date startDate = unwrap(composeStart(event, calendar));
    const bool startOpen = isOpenAt(startDate, now);
    const bool customised = event.eventHaveCustomizeInterval;
    const std::int64_t times = event.eventDateWhenCustomizeRepeatTimes;
    const std::int64_t todayYear = unwrap(calendar.dateComponents(kEngineComponents, now).year);

    // With a customised interval and a past start, the grid year at or before this year is
    // always left out, even when this year's date is still to come.
    std::int64_t skip = 0;
    if (customised && !startOpen) {
        skip = checkedAdd(
            checkedDiv(checkedSub(todayYear, event.eventStartDateYear), checkedAdd(times, 1)), 1);
    }

    for (std::int64_t i = 0; i <= 99; ++i) {
        if (static_cast<std::int64_t>(result.size()) > 100) {
            break;
        }
        std::int64_t year = 0;
        if (!customised) {
            year = checkedAdd(startOpen ? event.eventStartDateYear : todayYear, i);
        } else if (startOpen) {
            year = checkedAdd(event.eventStartDateYear, checkedMul(i, checkedAdd(times, 1)));
        } else {
            year = checkedAdd(event.eventStartDateYear,
                              checkedMul(checkedAdd(i, skip), checkedAdd(times, 1)));
        }
        const DateComponents candidate =
            dayComponents(year, event.eventStartDateMonth, event.eventStartDateDay);
        if (isOpenAt(unwrap(calendar.date(candidate)), now)) {
            result.push_back(candidate);
        }
    }
    applyEndCut(result, event, calendar);
    return result;
}

std::vector<DateComponents> occurrenceList(const EventFields& event, Date now,
                                           const Calendar& calendar) {
    switch (repeatTypeOf(event)) {
    case RepeatType::daily:
        return dailyOccurrences(event, now, calendar);
    case RepeatType::weekly:
        return weeklyOccurrences(event, now, calendar);
    case RepeatType::monthly:
        return monthlyOccurrences(event, now, calendar);
    case RepeatType::none:
    case RepeatType::yearly:
        return yearlyOccurrences(event, now, calendar);
    default:
        return {};
    }
}

// ---------------------------------------------------------------------------------------------
// Day query

namespace {

/// The tests of one day query: the day asked about, the series' start and its end.
struct DayTest {
    const EventFields& event;
    const Calendar& calendar;
    Date dayStart;
    Date startDate;

    /// The occurrence lies within the day, the day is not before the start, and not after the
    /// end date (whose day counts in full).
    bool matchesDay(Date occurrence) const {
        const double x = dayStart.timeIntervalSince(occurrence);
        if (!(x > kOverInterval && x <= 0)) {
            return false;
        }
        if (!(dayStart.timeIntervalSince(startDate) >= 0)) {
            return false;
        }
        return notAfterEnd();
    }

    bool notAfterEnd() const {
        if (!event.eventHaveEndDateOrNot) {
            return true;
        }
        const std::optional<Date> end = calendar.date(
            dayComponents(event.eventEndDateYear, event.eventEndDateMonth, event.eventEndDateDay));
        return end && dayStart.timeIntervalSince(*end) <= 0;
    }

    /// The occurrence is not yet more than a day beyond the day asked about.
    bool walkGoesOn(Date occurrence) const {
        return dayStart.timeIntervalSince(occurrence) >= kOverInterval;
    }
};

/// What one pass of a walk decided.
enum class Pass { Matched, Finished, Next, Stop };

/// The common tail of a pass that has composed its occurrence. A step of 0 or less never moves
/// the walk forward: every later occurrence is the same or earlier, so none can come into the
/// day once this one has missed it. The walk would then run on without end (or until the
/// numbers no longer compose), and it answers false at once instead.
Pass judge(const DayTest& test, Date occurrence, std::int64_t step) {
    if (test.matchesDay(occurrence)) {
        return Pass::Matched;
    }
    if (!test.walkGoesOn(occurrence)) {
        return Pass::Finished;
    }
    return step > 0 ? Pass::Next : Pass::Stop;
}

std::int64_t walkStep(const EventFields& event) {
    return event.eventHaveCustomizeInterval ? customStep(event) : 1;
}

bool oneOffHappens(const DayTest& test) {
    const double x = test.dayStart.timeIntervalSince(test.startDate);
    return x > kOverInterval && x <= 0 && test.notAfterEnd();
}

bool dailyWalkHappens(const DayTest& test) {
    const EventFields& event = test.event;
    const std::int64_t step = walkStep(event);
    std::int64_t day = event.eventStartDateDay;
    for (;;) {
        const std::optional<Date> occurrence = test.calendar.date(
            momentComponents(event.eventStartDateYear, event.eventStartDateMonth, day,
                             event.eventDateWhenEveryDayHour, event.eventDateWhenEveryDayMin));
        if (!occurrence) {
            return false;
        }
        const Pass pass = judge(test, *occurrence, step);
        if (pass != Pass::Next) {
            return pass == Pass::Matched;
        }
        day = checkedAdd(day, step);
    }
}

bool weeklyWalkHappens(const DayTest& test) {
    const EventFields& event = test.event;
    const DateComponents startParts =
        test.calendar.dateComponents(kEngineComponents, test.startDate);
    const std::vector<std::int64_t> codes = decodeDayListArchive(event.eventDateWhenEveryWeek);
    const std::int64_t step = walkStep(event);
    for (const std::int64_t code : codes) {
        std::int64_t week = unwrap(startParts.weekOfYear);
        for (;;) {
            DateComponents parts;
            parts.year = event.eventStartDateYear;
            parts.weekOfYear = week;
            parts.weekday = calendarWeekday(code);
            const std::optional<Date> occurrence = test.calendar.date(parts);
            if (!occurrence) {
                return false;
            }
            const Pass pass = judge(test, *occurrence, step);
            if (pass == Pass::Matched) {
                return true;
            }
            if (pass == Pass::Stop) {
                return false;
            }
            if (pass == Pass::Finished) {
                break;
            }
            week = checkedAdd(week, step);
        }
    }
    return false;
}

bool monthlyWalkHappens(const DayTest& test) {
    const EventFields& event = test.event;
    const DateComponents startParts =
        test.calendar.dateComponents(kEngineComponents, test.startDate);
    const std::vector<std::int64_t> codes = decodeDayListArchive(event.eventDateWhenEveryMonth);
    const std::int64_t step = walkStep(event);
    const std::int64_t year = event.eventStartDateYear;
    for (const std::int64_t code : codes) {
        std::int64_t month = unwrap(startParts.month);
        std::int64_t skippedInARow = 0;
        for (;;) {
            std::int64_t day = code;
            if (code == kLastDayOfMonthCode) {
                day = lastDayOfMonth(year, month, test.calendar);
            } else if (code == 29 || code == 30 || code == 31) {
                if (lastDayOfMonth(year, month, test.calendar) < code) {
                    // Too short for the code: straight on to the next month, no tests.
                    if (++skippedInARow >= kMaxConsecutiveSkippedMonths) {
                        return false;
                    }
                    month = checkedAdd(month, step);
                    continue;
                }
            }
            skippedInARow = 0;
            const std::optional<Date> occurrence =
                test.calendar.date(dayComponents(year, month, day));
            if (!occurrence) {
                return false;
            }
            const Pass pass = judge(test, *occurrence, step);
            if (pass == Pass::Matched) {
                return true;
            }
            if (pass == Pass::Stop) {
                return false;
            }
            if (pass == Pass::Finished) {
                break;
            }
            month = checkedAdd(month, step);
        }
    }
    return false;
}

bool yearlyWalkHappens(const DayTest& test) {
    const EventFields& event = test.event;
    const std::int64_t step = walkStep(event);
    std::int64_t year = event.eventStartDateYear;
    for (;;) {
        const std::optional<Date> occurrence = test.calendar.date(
            dayComponents(year, event.eventStartDateMonth, event.eventStartDateDay));
        if (!occurrence) {
            return false;
        }
        const Pass pass = judge(test, *occurrence, step);
        if (pass != Pass::Next) {
            return pass == Pass::Matched;
        }
        year = checkedAdd(year, step);
    }
}

} // namespace

bool eventHappensOnDay(const EventFields& event, Date date, const Calendar& calendar) {
    const Date dayStart = dayStartOf(date, calendar);
    const std::optional<Date> startDate = composeStart(event, calendar);
    if (!startDate) {
        return false;
    }
    const DayTest test{event, calendar, dayStart, *startDate};
    switch (repeatTypeOf(event)) {
    case RepeatType::none:
        // Only its start date; its forward list is yearly all the same.
        return oneOffHappens(test);
    case RepeatType::daily:
        return dailyWalkHappens(test);
    case RepeatType::weekly:
        return weeklyWalkHappens(test);
    case RepeatType::monthly:
        return monthlyWalkHappens(test);
    case RepeatType::yearly:
        return yearlyWalkHappens(test);
    default:
        return false;
    }
}

std::int64_t occurrencesOnDayFromToday(const EventFields& event, std::int64_t dayOffset, Date now,
                                       const Calendar& calendar) {
    const std::int64_t target = checkedAdd(dayOffset, 1);
    const std::vector<DateComponents> list = occurrenceList(event, now, calendar);
    if (list.empty()) {
        return 0;
    }
    const DateComponents today = calendar.dateComponents(kYear | kMonth | kDay, now);
    const std::int64_t year = unwrap(today.year);
    const std::int64_t month = unwrap(today.month);
    const std::int64_t upperDay = checkedAdd(unwrap(today.day), target);
    std::int64_t inside = 0;
    for (const DateComponents& element : list) {
        // One reading of the clock, so the moments are compared directly: the day's midnight is
        // inside, the next midnight is not.
        const Date upper = unwrap(calendar.date(dayComponents(year, month, upperDay)));
        const Date occurrence = unwrap(calendar.date(element));
        const Date lower =
            unwrap(calendar.date(dayComponents(year, month, checkedSub(upperDay, 1))));
        if (occurrence < upper && occurrence >= lower) {
            ++inside;
        }
    }
    return inside;
}

} // namespace tidemark
