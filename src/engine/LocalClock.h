// Calendar arithmetic without a round trip through ICU: proleptic Gregorian day numbers, the week
// numbering of a calendar, and a clock that turns a local wall time into a moment the way
// Calendar::date() does. The compiled rules (CompiledRules.h) use these to answer many questions
// with a few integer operations each; every answer is checked to be the one that the calendar
// itself would give, and where that can't be made sure the callers go back to the calendar.
#pragma once

#include "calendar/Calendar.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace tidemark {

inline constexpr std::int64_t kMillisPerDay = 86'400'000;
inline constexpr std::int64_t kMillisPerHour = 3'600'000;
inline constexpr std::int64_t kMillisPerMinute = 60'000;

/// Integer division rounding towards minus infinity, and the matching remainder (0 ... b-1).
constexpr std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    const std::int64_t q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}
constexpr std::int64_t floorMod(std::int64_t a, std::int64_t b) {
    return a - floorDiv(a, b) * b;
}

/// Days from 1970-01-01 to a proleptic Gregorian date. Month and day are lenient: month 14 is
/// February of the next year, day 0 the last day of the month before, day 35 runs on. Inline:
/// the occurrence lists ask it for nearly every element.
constexpr std::int64_t daysFromCivil(std::int64_t year, std::int64_t month, std::int64_t day) {
    // Normalise the month into the year first, then count with March as the first month of the
    // year so that the leap day falls at the end of it.
    std::int64_t y = year;
    std::int64_t m = month;
    if (m < 1 || m > 12) {
        y += floorDiv(m - 1, 12);
        m = floorMod(m - 1, 12) + 1;
    }
    y -= m <= 2 ? 1 : 0;
    // The parts within an era are never negative: unsigned, they divide without corrections.
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const auto yearOfEra = static_cast<std::uint64_t>(y - era * 400);
    const auto dayOfYear = (153 * static_cast<std::uint64_t>(m > 2 ? m - 3 : m + 9) + 2) / 5;
    const std::uint64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + static_cast<std::int64_t>(dayOfEra) - 719468 + (day - 1);
}

struct CivilDate {
    std::int64_t year = 0;
    std::int64_t month = 0; ///< 1 ... 12
    std::int64_t day = 0;   ///< 1 ... 31
};
/// The date of a day number (the inverse of daysFromCivil for normalised dates).
CivilDate civilFromDays(std::int64_t days);

bool isLeapYear(std::int64_t year);
/// The length of a month, the month taken leniently (month 14 of 2027 is February 2028).
std::int64_t daysInMonth(std::int64_t year, std::int64_t month);
/// The weekday of a day number: 1 Sunday ... 7 Saturday.
std::int64_t weekdayOfDays(std::int64_t days);

/// The week numbering of a calendar: weeks start on `firstWeekday`, and week 1 of a year is the
/// first week with at least `minimalDays` days in that year.
struct WeekRules {
    int firstWeekday = 1; ///< 1 Sunday ... 7 Saturday
    int minimalDays = 1;  ///< 1 ... 7

    /// The first day of week 1 of a week-numbering year.
    std::int64_t firstWeekStart(std::int64_t yearForWeek) const;
    /// The week of the year of a day (in its week-numbering year).
    std::int64_t weekOfYear(std::int64_t days) const;
    /// The day that year + weekOfYear + weekday name, the year being the week-numbering year;
    /// weeks beyond the year's last run on into the next year.
    std::int64_t dayOfWeek(std::int64_t yearForWeek, std::int64_t week, std::int64_t weekday) const;
};

/// Local wall time to moments for one calendar, for one batch of questions. It learns the zone's
/// offsets one year at a time, checks each year's changes against Calendar::date(), and reports
/// through `consistent()` whether everything it answered can be trusted; a batch whose clock is
/// not consistent at its end must be answered again by the calendar itself. The years a clock
/// learns are kept for the process under the zone's identifier, so that the next batch in the
/// same zone (the next plan, the month after a save) starts with them: what a year says depends
/// on the zone's rules only, not on the locale or the week rules. A clock is not thread-safe;
/// clocks of several threads may share the kept years.
class LocalClock {
public:
    explicit LocalClock(const Calendar& calendar);

    /// Whether Gregorian arithmetic stands for this calendar at all.
    bool usable() const { return usable_; }
    /// False once any answer may differ from the calendar's.
    bool consistent() const { return usable_ && consistent_; }
    const WeekRules& weekRules() const { return weekRules_; }

    /// The moment of a wall time: `millisInDay` after the start of local day `days`, as
    /// Calendar::date() composes it (repeated times take the earlier moment, skipped ones move on
    /// by the gap). `millisInDay` must lie within the day.
    Date moment(std::int64_t days, std::int64_t millisInDay) const {
        const std::int64_t wall = days * kMillisPerDay + millisInDay;
        return Date{static_cast<double>(wall - offsetAt(days, wall)) / 1000.0};
    }

    /// moment() of the day of a date (lenient as daysFromCivil is) at `millisInDay`. The lists
    /// ask for one date in each of many years: a year the clock knows already is found by its
    /// number, and the day counted from its 1 January.
    Date momentOf(std::int64_t year, std::int64_t month, std::int64_t day,
                  std::int64_t millisInDay) const {
        if (month < 1 || month > 12) {
            year += floorDiv(month - 1, 12);
            month = floorMod(month - 1, 12) + 1;
        }
        const std::int64_t slot = year - kIndexedFrom;
        const Year* known =
            slot >= 0 && slot < kIndexedYears ? indexed_[static_cast<std::size_t>(slot)] : nullptr;
        if (known == nullptr) {
            return moment(daysFromCivil(year, month, day), millisInDay);
        }
        static constexpr std::int64_t kDaysBefore[12] = {0,   31,  59,  90,  120, 151,
                                                         181, 212, 243, 273, 304, 334};
        const bool leap = known->endDay - known->firstDay == 366;
        const std::int64_t days =
            known->firstDay + kDaysBefore[month - 1] + (leap && month > 2 ? 1 : 0) + day - 1;
        if (days < known->firstDay || days >= known->endDay) {
            return moment(days, millisInDay);
        }
        const std::int64_t wall = days * kMillisPerDay + millisInDay;
        return Date{static_cast<double>(wall - offsetIn(*known, wall)) / 1000.0};
    }

    /// The offset that applies to every wall time from the start of day `fromDay` up to the
    /// start of day `toDay`, if it does not change in between.
    std::optional<std::int64_t> steadyOffset(std::int64_t fromDay, std::int64_t toDay) const;

    /// The years that the clock accepts; outside them it reports itself inconsistent.
    static constexpr std::int64_t kFirstYear = 1600;
    static constexpr std::int64_t kLastYear = 1'000'000;

private:
    struct Year {
        std::int64_t firstDay = 0; ///< day number of 1 January
        std::int64_t endDay = 0;   ///< day number of 1 January of the next year
        /// False when the calendar's answers for the year could not be confirmed: a clock that
        /// uses it is no longer consistent.
        bool trusted = true;
        std::int64_t startOffset = 0;
        /// Wall times (ms) from which on a new offset applies, ascending, and those offsets.
        std::vector<std::pair<std::int64_t, std::int64_t>> changes;
    };

    std::int64_t offsetAt(std::int64_t days, std::int64_t wall) const {
        const Year* year = last_;
        if (year == nullptr || days < year->firstDay || days >= year->endDay) {
            // The year of the day by estimate (off by at most one), among those indexed.
            const std::int64_t scaled = days * 400;
            const std::int64_t guess =
                1970 + (scaled >= 0 ? scaled : scaled - 146096) / 146097 - kIndexedFrom;
            year = guess >= 0 && guess < kIndexedYears ? indexed_[static_cast<std::size_t>(guess)]
                                                       : nullptr;
            if (year == nullptr || days < year->firstDay || days >= year->endDay) {
                year = &yearOf(days);
            }
        }
        last_ = year;
        return offsetIn(*year, wall);
    }

    /// The offset of a wall time within `year`.
    static std::int64_t offsetIn(const Year& year, std::int64_t wall) {
        std::int64_t offset = year.startOffset;
        for (const auto& [from, after] : year.changes) {
            if (wall < from) {
                break;
            }
            offset = after;
        }
        return offset;
    }

    struct ZoneYears;

    const Year& yearOf(std::int64_t days) const;
    const Year& learned(std::int64_t year) const;
    Year learnYear(std::int64_t year) const;

    const Calendar& calendar_;
    WeekRules weekRules_;
    bool usable_ = false;
    mutable bool consistent_ = true;
    /// The years of the zone kept for the process (none when the clock is not usable).
    std::shared_ptr<ZoneYears> zoneYears_;
    /// Years learned by this clock alone: those outside the accepted range, or beyond what the
    /// kept years take.
    mutable std::map<std::int64_t, Year> years_;
    /// The years 1900 to 2299, where nearly every question lies, by their number.
    static constexpr std::int64_t kIndexedFrom = 1900;
    static constexpr std::int64_t kIndexedYears = 400;
    mutable std::vector<const Year*> indexed_ = std::vector<const Year*>(kIndexedYears, nullptr);
    mutable const Year* last_ = nullptr;
};

} // namespace tidemark
