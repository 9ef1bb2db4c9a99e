#include "engine/LocalClock.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <string>

namespace tidemark {

CivilDate civilFromDays(std::int64_t days) {
    const std::int64_t z = days + 719468;
    const std::int64_t era = floorDiv(z, 146097);
    const std::int64_t dayOfEra = z - era * 146097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t mp = (5 * dayOfYear + 2) / 153;
    const std::int64_t day = dayOfYear - (153 * mp + 2) / 5 + 1;
    const std::int64_t month = mp < 10 ? mp + 3 : mp - 9;
    return CivilDate{yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

bool isLeapYear(std::int64_t year) {
    return floorMod(year, 4) == 0 && (floorMod(year, 100) != 0 || floorMod(year, 400) == 0);
}

std::int64_t daysInMonth(std::int64_t year, std::int64_t month) {
    const std::int64_t y = year + floorDiv(month - 1, 12);
    const std::int64_t m = floorMod(month - 1, 12) + 1;
    static constexpr std::int64_t kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && isLeapYear(y) ? 29 : kLengths[m - 1];
}

std::int64_t weekdayOfDays(std::int64_t days) {
    return floorMod(days + 4, 7) + 1; // 1970-01-01 was a Thursday
}

std::int64_t WeekRules::firstWeekStart(std::int64_t yearForWeek) const {
    const std::int64_t january1 = daysFromCivil(yearForWeek, 1, 1);
    const std::int64_t intoWeek = floorMod(weekdayOfDays(january1) - firstWeekday, 7);
    std::int64_t start = january1 - intoWeek;
    if (7 - intoWeek < minimalDays) {
        start += 7; // the week of 1 January is too short: it belongs to the year before
    }
    return start;
}

std::int64_t WeekRules::weekOfYear(std::int64_t days) const {
    const std::int64_t year = civilFromDays(days).year;
    const std::int64_t nextStart = firstWeekStart(year + 1);
    if (days >= nextStart) {
        return 1 + (days - nextStart) / 7;
    }
    const std::int64_t start = firstWeekStart(year);
    if (days >= start) {
        return 1 + (days - start) / 7;
    }
    return 1 + (days - firstWeekStart(year - 1)) / 7;
}

std::int64_t WeekRules::dayOfWeek(std::int64_t yearForWeek, std::int64_t week,
                                  std::int64_t weekday) const {
    return firstWeekStart(yearForWeek) + floorMod(weekday - firstWeekday, 7) + 7 * (week - 1);
}

// ---------------------------------------------------------------------------------------------

/// The years learned in one zone, kept for the process. Entries are only ever added, so a
/// year's address stays valid for as long as the set lives; clocks hold the set.
struct LocalClock::ZoneYears {
    std::mutex mutex;
    std::map<std::int64_t, Year> years;
};

namespace {

/// Enough for every year a plan or a month view asks about in a zone, many times over; years
/// beyond that are learned by each clock for itself.
constexpr std::size_t kKeptYearsPerZone = 4096;

} // namespace

LocalClock::LocalClock(const Calendar& calendar) : calendar_(calendar) {
    // Only the Gregorian system counts days as daysFromCivil does (from 1600 on, well clear of
    // the switch from the Julian calendar).
    usable_ = calendar.calendarType() == "gregorian";
    weekRules_.firstWeekday = calendar.firstWeekday();
    weekRules_.minimalDays = calendar.minimumDaysInFirstWeek();
    if (weekRules_.firstWeekday < 1 || weekRules_.firstWeekday > 7 || weekRules_.minimalDays < 1 ||
        weekRules_.minimalDays > 7) {
        usable_ = false;
    }
    if (usable_) {
        static std::mutex zonesMutex;
        static std::map<std::string, std::shared_ptr<ZoneYears>, std::less<>> zones;
        const std::string zone = calendar.timeZoneId();
        const std::lock_guard lock(zonesMutex);
        std::shared_ptr<ZoneYears>& years = zones[zone];
        if (years == nullptr) {
            years = std::make_shared<ZoneYears>();
        }
        zoneYears_ = years;
    }
}

const LocalClock::Year& LocalClock::learned(std::int64_t year) const {
    const bool isIndexed = year >= kIndexedFrom && year < kIndexedFrom + kIndexedYears;
    if (isIndexed) {
        if (const Year* known = indexed_[static_cast<std::size_t>(year - kIndexedFrom)]) {
            return *known;
        }
    }
    const Year* found = nullptr;
    if (auto own = years_.find(year); own != years_.end()) {
        found = &own->second;
    } else if (zoneYears_ != nullptr && year >= kFirstYear && year <= kLastYear) {
        {
            const std::lock_guard lock(zoneYears_->mutex);
            if (auto kept = zoneYears_->years.find(year); kept != zoneYears_->years.end()) {
                found = &kept->second;
            }
        }
        if (found == nullptr) {
            // Learned outside the lock (it asks the calendar of this thread); a year another
            // clock put there meanwhile says the same, and the first one stays.
            Year learnt = learnYear(year);
            const std::lock_guard lock(zoneYears_->mutex);
            if (zoneYears_->years.size() < kKeptYearsPerZone || zoneYears_->years.contains(year)) {
                found = &zoneYears_->years.emplace(year, std::move(learnt)).first->second;
            } else {
                found = &years_.emplace(year, std::move(learnt)).first->second;
            }
        }
    } else {
        found = &years_.emplace(year, learnYear(year)).first->second;
    }
    if (!found->trusted) {
        consistent_ = false;
    }
    if (isIndexed) {
        indexed_[static_cast<std::size_t>(year - kIndexedFrom)] = found;
    }
    return *found;
}

const LocalClock::Year& LocalClock::yearOf(std::int64_t days) const {
    // A year estimate that is off by at most one, then corrected by the year's own bounds.
    std::int64_t year = 1970 + floorDiv(days * 400, 146097);
    const Year* found = &learned(year);
    while (days < found->firstDay) {
        found = &learned(--year);
    }
    while (days >= found->endDay) {
        found = &learned(++year);
    }
    return *found;
}

std::optional<std::int64_t> LocalClock::steadyOffset(std::int64_t fromDay,
                                                     std::int64_t toDay) const {
    const std::int64_t fromWall = fromDay * kMillisPerDay;
    const std::int64_t toWall = toDay * kMillisPerDay;
    const std::int64_t offset = offsetAt(fromDay, fromWall);
    for (const std::int64_t day : {fromDay, toDay - 1}) {
        for (const auto& change : yearOf(day).changes) {
            if (change.first > fromWall && change.first < toWall) {
                return std::nullopt;
            }
        }
    }
    return offset;
}

namespace {

/// The components of a wall time given in milliseconds (whole minutes).
DateComponents wallComponents(std::int64_t wall) {
    const std::int64_t days = floorDiv(wall, kMillisPerDay);
    const std::int64_t inDay = wall - days * kMillisPerDay;
    const CivilDate date = civilFromDays(days);
    DateComponents c;
    c.year = date.year;
    c.month = date.month;
    c.day = date.day;
    c.hour = inDay / kMillisPerHour;
    c.minute = (inDay % kMillisPerHour) / kMillisPerMinute;
    return c;
}

} // namespace

LocalClock::Year LocalClock::learnYear(std::int64_t year) const {
    Year result;
    result.firstDay = daysFromCivil(year, 1, 1);
    result.endDay = daysFromCivil(year + 1, 1, 1);
    if (!usable_ || year < kFirstYear || year > kLastYear) {
        result.trusted = false;
        return result;
    }
    const std::int64_t startWall = result.firstDay * kMillisPerDay;
    const std::int64_t endWall = result.endDay * kMillisPerDay;

    // The calendar's own answer for a wall time, as milliseconds; false when it has none.
    const auto composed = [&](std::int64_t wall, std::int64_t& millis) {
        const std::optional<Date> date = calendar_.date(wallComponents(wall));
        if (!date) {
            return false;
        }
        millis = std::llround(date->secondsSince1970 * 1000.0);
        return true;
    };

    std::int64_t startMillis = 0;
    if (!composed(startWall, startMillis)) {
        result.trusted = false;
        return result;
    }
    result.startOffset = startWall - startMillis;

    const auto transitions =
        calendar_.zoneTransitions(Date{static_cast<double>(startWall - 2 * kMillisPerDay) / 1000.0},
                                  Date{static_cast<double>(endWall + 2 * kMillisPerDay) / 1000.0});
    if (!transitions) {
        result.trusted = false;
        return result;
    }
    std::int64_t current = result.startOffset;
    std::int64_t previousFrom = startWall - 7 * kMillisPerDay;
    for (const ZoneTransition& transition : *transitions) {
        const std::int64_t before = transition.offsetBefore;
        const std::int64_t after = transition.offsetAfter;
        if (before == after) {
            continue;
        }
        const double at = transition.utcMillis;
        if (at != std::floor(at) || std::llabs(after - before) >= 6 * kMillisPerHour) {
            result.trusted = false;
            return result;
        }
        // Wall times from the earlier of the two readings on are ambiguous or skipped; both take
        // the offset before the change, up to the later reading.
        const std::int64_t utc = static_cast<std::int64_t>(at);
        const std::int64_t from = utc + std::max(before, after);
        const std::int64_t gapStart = utc + std::min(before, after);
        if (from <= startWall || from >= endWall) {
            continue;
        }
        // Changes must follow each other a week apart or more, in whole minutes, and continue one
        // another: the day windows of the compiled rules rely on it.
        if (before != current || from % kMillisPerMinute != 0 || gapStart % kMillisPerMinute != 0 ||
            from - previousFrom < 7 * kMillisPerDay) {
            result.trusted = false;
            return result;
        }
        // Check the rule against the calendar itself around the change.
        for (const auto& [wall, offset] : {std::pair{gapStart, before}, std::pair{from, after}}) {
            std::int64_t millis = 0;
            if (!composed(wall, millis) || wall - millis != offset) {
                result.trusted = false;
                return result;
            }
        }
        result.changes.emplace_back(from, after);
        current = after;
        previousFrom = from;
    }
    return result;
}

} // namespace tidemark
