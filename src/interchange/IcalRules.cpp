#include "interchange/IcalRules.h"

#include "base/Fatal.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "records/DayListArchive.h"

#include <algorithm>
#include <array>
#include <libical/ical.h>
#include <unordered_map>
#include <utility>

namespace tidemark {

namespace {

/// The calendar's weekdays (1 Sunday ... 7 Saturday) as RRULE weekday names.
constexpr std::array<const char*, 8> kCalendarWeekdayNames{"",   "SU", "MO", "TU",
                                                           "WE", "TH", "FR", "SA"};

/// The largest step an RRULE is written with; beyond it the rule is said by its dates.
constexpr std::int64_t kLargestStep = 1000;
/// The last-day code of monthly rules.
constexpr std::int64_t kLastDayCode = 99;

constexpr std::array<std::pair<const char*, const char*>, 10> kCssColors{{
    {"colorForUserSelection01", "tomato"},
    {"colorForUserSelection02", "darkorange"},
    {"colorForUserSelection03", "seagreen"},
    {"colorForUserSelection04", "royalblue"},
    {"colorForUserSelection05", "mediumpurple"},
    {"colorForUserSelection06", "mediumvioletred"},
    {"colorForUserSelection07", "lightseagreen"},
    {"colorForUserSelection08", "darkkhaki"},
    {"colorForUserSelection09", "slategray"},
    {"colorForUserSelection10", "goldenrod"},
}};

} // namespace

DayWindow DayWindow::from(Date now, const Calendar& calendar) {
    const DateComponents today = calendar.dateComponents(kYear | kMonth | kDay, now);
    const std::int64_t year = unwrap(today.year);
    const std::int64_t month = unwrap(today.month);
    const std::int64_t day = unwrap(today.day);
    return {daysFromCivil(year, month, day), daysFromCivil(year + kCheckedYears, month, day)};
}

std::vector<std::vector<std::int64_t>>
engineDaysInWindow(const RuleBatch& batch, const DayWindow& window, const Calendar& calendar) {
    // The days an event can fall on at all, so that each day asks only those events: every day
    // for daily rules (and rules with codes outside the calendar's), the code's weekday for
    // weekly rules (the week walk always lands on it), the code's day of the month or the last
    // day for monthly rules, the start's month and day composed in each year for yearly rules,
    // the start for single dates.
    std::vector<std::size_t> everyDay;
    std::array<std::vector<std::size_t>, 8> byWeekday;
    std::array<std::vector<std::size_t>, 32> byMonthDay;
    std::vector<std::size_t> onLastDays;
    std::unordered_map<std::int64_t, std::vector<std::size_t>> onDay;
    const std::int64_t firstYear = civilFromDays(window.firstDay).year - 1;
    const std::int64_t lastYear = civilFromDays(window.endDay).year + 1;
    const auto join = [](std::vector<std::size_t>& group, std::size_t index) {
        if (group.empty() || group.back() != index) {
            group.push_back(index);
        }
    };
    for (std::size_t i = 0; i < batch.size(); ++i) {
        const EventFields& e = batch.event(i);
        switch (e.eventType) {
        case 0:
            onDay[startDayOf(e)].push_back(i);
            break;
        case 2: {
            const auto codes = decodeDayListArchive(e.eventDateWhenEveryWeek);
            if (std::any_of(codes.begin(), codes.end(),
                            [](std::int64_t c) { return c < 1 || c > 7; })) {
                everyDay.push_back(i);
                break;
            }
            for (const std::int64_t code : codes) {
                join(byWeekday[static_cast<std::size_t>(calendarWeekday(code))], i);
            }
            break;
        }
        case 3: {
            const auto codes = decodeDayListArchive(e.eventDateWhenEveryMonth);
            if (std::any_of(codes.begin(), codes.end(), [](std::int64_t c) {
                    return (c < 1 || c > 31) && c != kLastDayCode;
                })) {
                everyDay.push_back(i);
                break;
            }
            for (const std::int64_t code : codes) {
                join(code == kLastDayCode ? onLastDays : byMonthDay[static_cast<std::size_t>(code)],
                     i);
            }
            break;
        }
        case 4:
            for (std::int64_t year = firstYear; year <= lastYear; ++year) {
                join(onDay[daysFromCivil(year, e.eventStartDateMonth, e.eventStartDateDay)], i);
            }
            break;
        default:
            everyDay.push_back(i);
            break;
        }
    }

    // The engine takes an occurrence for a day when it lies less than 86400 s after the day's
    // midnight: on a day shortened by a clock change that reaches into the next day, so such a
    // day asks the next day's events too.
    std::vector<Date> midnights;
    midnights.reserve(static_cast<std::size_t>(window.endDay - window.firstDay + 1));
    for (std::int64_t day = window.firstDay; day <= window.endDay; ++day) {
        const CivilDate date = civilFromDays(day);
        midnights.push_back(unwrap(calendar.date(dayComponents(date.year, date.month, date.day))));
    }
    std::vector<std::size_t> among;
    const auto addCandidates = [&](std::int64_t day) {
        const CivilDate date = civilFromDays(day);
        const auto& weekday = byWeekday[static_cast<std::size_t>(weekdayOfDays(day))];
        among.insert(among.end(), weekday.begin(), weekday.end());
        const auto& monthDay = byMonthDay[static_cast<std::size_t>(date.day)];
        among.insert(among.end(), monthDay.begin(), monthDay.end());
        if (date.day == daysInMonth(date.year, date.month)) {
            among.insert(among.end(), onLastDays.begin(), onLastDays.end());
        }
        if (const auto exact = onDay.find(day); exact != onDay.end()) {
            among.insert(among.end(), exact->second.begin(), exact->second.end());
        }
    };
    std::vector<std::vector<std::int64_t>> days(batch.size());
    for (std::int64_t day = window.firstDay; day < window.endDay; ++day) {
        const auto at = static_cast<std::size_t>(day - window.firstDay);
        among = everyDay;
        addCandidates(day);
        if (midnights[at + 1].timeIntervalSince(midnights[at]) < 86400.0) {
            addCandidates(day + 1);
        }
        if (among.empty()) {
            continue;
        }
        std::sort(among.begin(), among.end());
        among.erase(std::unique(among.begin(), among.end()), among.end());
        for (const std::size_t index : batch.indicesOnDate(midnights[at], among)) {
            days[index].push_back(day);
        }
    }
    return days;
}

bool engineHasDay(const RuleBatch& batch, std::size_t index, std::int64_t day,
                  const Calendar& calendar) {
    const CivilDate date = civilFromDays(day);
    const auto midnight = calendar.date(dayComponents(date.year, date.month, date.day));
    return midnight && batch.happensOnDay(index, *midnight);
}

std::int64_t startDayOf(const EventFields& event) {
    return daysFromCivil(event.eventStartDateYear, event.eventStartDateMonth,
                         event.eventStartDateDay);
}

std::optional<std::int64_t> endDayOf(const EventFields& event) {
    if (!event.eventHaveEndDateOrNot) {
        return std::nullopt;
    }
    return daysFromCivil(event.eventEndDateYear, event.eventEndDateMonth, event.eventEndDateDay);
}

std::string RepeatPattern::text() const {
    std::string text;
    switch (frequency) {
    case Frequency::daily:
        text = "FREQ=DAILY";
        break;
    case Frequency::weekly: {
        text = "FREQ=WEEKLY;BYDAY=";
        for (std::size_t i = 0; i < weekdays.size(); ++i) {
            text += (i == 0 ? "" : ",") + std::string(kCalendarWeekdayNames[weekdays[i]]);
        }
        text += ";WKST=" + std::string(kCalendarWeekdayNames[weekStart]);
        break;
    }
    case Frequency::monthly:
        text = "FREQ=MONTHLY;BYMONTHDAY=";
        for (std::size_t i = 0; i < monthDays.size(); ++i) {
            text += (i == 0 ? "" : ",") + std::to_string(monthDays[i]);
        }
        break;
    case Frequency::yearly:
        text = "FREQ=YEARLY";
        break;
    }
    if (interval > 1) {
        text += ";INTERVAL=" + std::to_string(interval);
    }
    return text;
}

std::optional<RepeatPattern> patternOf(const EventFields& event, int firstWeekday) {
    using Frequency = RepeatPattern::Frequency;
    RepeatPattern pattern;
    pattern.weekStart = firstWeekday;
    switch (event.eventType) {
    case 1:
        pattern.frequency = Frequency::daily;
        break;
    case 2:
        pattern.frequency = Frequency::weekly;
        for (const std::int64_t code : decodeDayListArchive(event.eventDateWhenEveryWeek)) {
            if (code < 1 || code > 7) {
                return std::nullopt;
            }
            const int weekday = static_cast<int>(calendarWeekday(code));
            if (std::find(pattern.weekdays.begin(), pattern.weekdays.end(), weekday) ==
                pattern.weekdays.end()) {
                pattern.weekdays.push_back(weekday);
            }
        }
        if (pattern.weekdays.empty()) {
            return std::nullopt;
        }
        break;
    case 3:
        pattern.frequency = Frequency::monthly;
        for (const std::int64_t code : decodeDayListArchive(event.eventDateWhenEveryMonth)) {
            if ((code < 1 || code > 31) && code != kLastDayCode) {
                return std::nullopt;
            }
            const int day = code == kLastDayCode ? -1 : static_cast<int>(code);
            if (std::find(pattern.monthDays.begin(), pattern.monthDays.end(), day) ==
                pattern.monthDays.end()) {
                pattern.monthDays.push_back(day);
            }
        }
        if (pattern.monthDays.empty()) {
            return std::nullopt;
        }
        break;
    case 4:
        pattern.frequency = Frequency::yearly;
        break;
    default:
        return std::nullopt;
    }
    if (event.eventHaveCustomizeInterval) {
        const std::int64_t times = event.eventDateWhenCustomizeRepeatTimes;
        if (times < 0 || times >= kLargestStep) {
            return std::nullopt;
        }
        pattern.interval = times + 1;
    }
    return pattern;
}

std::optional<RepeatPattern> patternOf(const icalrecurrencetype& rule) {
    using Frequency = RepeatPattern::Frequency;
    const auto none = [](const short* list) { return list[0] == ICAL_RECURRENCE_ARRAY_MAX; };
    if (!none(rule.by_second) || !none(rule.by_minute) || !none(rule.by_hour) ||
        !none(rule.by_year_day) || !none(rule.by_week_no) || !none(rule.by_set_pos) ||
        !none(rule.by_month) || rule.interval < 1 || rule.interval >= kLargestStep) {
        return std::nullopt;
    }
    RepeatPattern pattern;
    pattern.interval = rule.interval;
    if (rule.week_start >= ICAL_SUNDAY_WEEKDAY && rule.week_start <= ICAL_SATURDAY_WEEKDAY) {
        pattern.weekStart = static_cast<int>(rule.week_start);
    }
    if (rule.count > 0) {
        pattern.count = rule.count;
    }
    for (int i = 0; rule.by_day[i] != ICAL_RECURRENCE_ARRAY_MAX; ++i) {
        if (icalrecurrencetype_day_position(rule.by_day[i]) != 0) {
            return std::nullopt;
        }
        const int weekday = static_cast<int>(icalrecurrencetype_day_day_of_week(rule.by_day[i]));
        if (std::find(pattern.weekdays.begin(), pattern.weekdays.end(), weekday) ==
            pattern.weekdays.end()) {
            pattern.weekdays.push_back(weekday);
        }
    }
    for (int i = 0; rule.by_month_day[i] != ICAL_RECURRENCE_ARRAY_MAX; ++i) {
        const int day = rule.by_month_day[i];
        if (day != -1 && (day < 1 || day > 31)) {
            return std::nullopt;
        }
        if (std::find(pattern.monthDays.begin(), pattern.monthDays.end(), day) ==
            pattern.monthDays.end()) {
            pattern.monthDays.push_back(day);
        }
    }
    switch (rule.freq) {
    case ICAL_DAILY_RECURRENCE:
        pattern.frequency = Frequency::daily;
        return pattern.weekdays.empty() && pattern.monthDays.empty() ? std::optional(pattern)
                                                                     : std::nullopt;
    case ICAL_WEEKLY_RECURRENCE:
        pattern.frequency = Frequency::weekly;
        return pattern.monthDays.empty() ? std::optional(pattern) : std::nullopt;
    case ICAL_MONTHLY_RECURRENCE:
        pattern.frequency = Frequency::monthly;
        return pattern.weekdays.empty() ? std::optional(pattern) : std::nullopt;
    case ICAL_YEARLY_RECURRENCE:
        pattern.frequency = Frequency::yearly;
        return pattern.weekdays.empty() && pattern.monthDays.empty() ? std::optional(pattern)
                                                                     : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::vector<std::int64_t> patternDays(const RepeatPattern& p, std::int64_t startDay,
                                      std::int64_t fromDay, std::int64_t endDay,
                                      std::size_t limit) {
    using Frequency = RepeatPattern::Frequency;
    std::vector<std::int64_t> days;
    std::int64_t produced = 0;
    bool done = false;
    // Each instance in order; false once no later instance can count.
    const auto emit = [&](std::int64_t day) {
        if ((p.count && produced >= *p.count) || (p.untilDay && day > *p.untilDay) ||
            day >= endDay || days.size() >= limit) {
            done = true;
            return;
        }
        ++produced;
        if (day >= fromDay) {
            days.push_back(day);
        }
    };
    emit(startDay);
    // Without a count the walk may begin at the first period that reaches `fromDay`.
    const auto firstPeriod = [&](std::int64_t periodLength) -> std::int64_t {
        if (p.count || fromDay <= startDay) {
            return 0;
        }
        return std::max<std::int64_t>(0, (fromDay - startDay) / (periodLength * p.interval) - 1);
    };
    const CivilDate start = civilFromDays(startDay);
    // Beyond this many periods a rule that still hasn't ended yields nothing more that counts.
    constexpr std::int64_t kMostPeriods = 100'000;
    switch (p.frequency) {
    case Frequency::daily:
        for (std::int64_t k = std::max<std::int64_t>(1, firstPeriod(1)); !done; ++k) {
            emit(startDay + k * p.interval);
        }
        break;
    case Frequency::weekly: {
        const std::int64_t weekStart =
            startDay - floorMod(weekdayOfDays(startDay) - p.weekStart, 7);
        for (std::int64_t j = firstPeriod(7); !done && j < kMostPeriods; ++j) {
            const std::int64_t week = weekStart + j * 7 * p.interval;
            for (std::int64_t day = week; day < week + 7 && !done; ++day) {
                if (day > startDay && std::find(p.weekdays.begin(), p.weekdays.end(),
                                                weekdayOfDays(day)) != p.weekdays.end()) {
                    emit(day);
                }
            }
        }
        break;
    }
    case Frequency::monthly: {
        const std::int64_t firstMonth = start.year * 12 + start.month - 1;
        std::vector<std::int64_t> inMonth;
        for (std::int64_t j = firstPeriod(31); !done && j < kMostPeriods; ++j) {
            const std::int64_t index = firstMonth + j * p.interval;
            const std::int64_t year = floorDiv(index, 12);
            const std::int64_t month = floorMod(index, 12) + 1;
            const std::int64_t length = daysInMonth(year, month);
            inMonth.clear();
            for (const int code : p.monthDays) {
                const std::int64_t day = code == -1 ? length : code;
                if (day <= length) {
                    inMonth.push_back(day);
                }
            }
            std::sort(inMonth.begin(), inMonth.end());
            inMonth.erase(std::unique(inMonth.begin(), inMonth.end()), inMonth.end());
            const std::int64_t monthStart = daysFromCivil(year, month, 1);
            for (const std::int64_t day : inMonth) {
                if (monthStart + day - 1 > startDay && !done) {
                    emit(monthStart + day - 1);
                }
            }
        }
        break;
    }
    case Frequency::yearly:
        for (std::int64_t j = std::max<std::int64_t>(1, firstPeriod(366));
             !done && j < kMostPeriods; ++j) {
            const std::int64_t year = start.year + j * p.interval;
            // A date the year lacks (29 February) gives no instance that year.
            if (start.day <= daysInMonth(year, start.month)) {
                emit(daysFromCivil(year, start.month, start.day));
            }
        }
        break;
    }
    return days;
}

icaltimetype icalDate(std::int64_t day) {
    const CivilDate date = civilFromDays(day);
    icaltimetype t = icaltime_null_date();
    t.year = static_cast<int>(date.year);
    t.month = static_cast<int>(date.month);
    t.day = static_cast<int>(date.day);
    return t;
}

icaltimetype icalWallTime(std::int64_t day, int hour, int minute) {
    icaltimetype t = icalDate(day);
    t.is_date = 0;
    t.hour = hour;
    t.minute = minute;
    t.second = 0;
    return t;
}

std::int64_t dayOfIcalTime(const icaltimetype& time) {
    return daysFromCivil(time.year, time.month, time.day);
}

std::string cssColorOf(const std::string& colorName) {
    for (const auto& [name, css] : kCssColors) {
        if (colorName == name) {
            return css;
        }
    }
    return "";
}

std::string colorNameOfCss(const std::string& cssName) {
    for (const auto& [name, css] : kCssColors) {
        if (cssName == css) {
            return name;
        }
    }
    return "";
}

} // namespace tidemark
