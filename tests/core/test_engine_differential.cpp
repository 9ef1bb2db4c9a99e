// The batch engine (RuleBatch) against the walks of Occurrences.h, on generated rules: every
// answer must be the walk's, element by element. The run is seeded; set
// TIDEMARK_DIFFERENTIAL_SEED to replay a reported case and TIDEMARK_DIFFERENTIAL_CASES to change
// how many day questions are asked (the lists and plans scale with it).
#include "base/Fatal.h"
#include "engine/CanonicalDayList.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "records/Store.h"
#include "test_engine_support.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>
#include <sqlite3.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <tuple>
#include <unistd.h>
#include <vector>

using namespace tidemark;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr std::int64_t kDefaultDayCases = 12'000;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr std::int64_t kDefaultDayCases = 12'000;
#else
constexpr std::int64_t kDefaultDayCases = 100'000;
#endif
#else
constexpr std::int64_t kDefaultDayCases = 100'000;
#endif
constexpr std::uint64_t kDefaultSeed = 20260310;

std::int64_t envInt(const char* name, std::int64_t fallback) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') {
        return fallback;
    }
    return std::strtoll(value, nullptr, 10);
}

/// A small, portable random source: the same seed gives the same cases everywhere.
class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    /// Uniform in [low, high].
    std::int64_t between(std::int64_t low, std::int64_t high) {
        const auto span = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<std::int64_t>(engine_() % span);
    }
    bool chance(int percent) { return between(0, 99) < percent; }
    template <class T> const T& pick(const std::vector<T>& values) {
        return values[static_cast<std::size_t>(
            between(0, static_cast<std::int64_t>(values.size()) - 1))];
    }

private:
    std::mt19937_64 engine_;
};

struct Place {
    std::string zone;
    std::string locale;
    int firstWeekday;
    int minimalDays;
};

/// Zones with clock changes in both hemispheres, one without, both first weekdays and both
/// common week rules; and one calendar system that is not Gregorian.
const std::vector<Place>& places() {
    static const std::vector<Place> list = {
        {"Europe/Berlin", "de_DE", 2, 4},    {"Europe/Berlin", "en_US", 1, 1},
        {"America/New_York", "en_US", 1, 1}, {"America/New_York", "en_US", 2, 4},
        {"Pacific/Auckland", "en_NZ", 2, 1}, {"Pacific/Auckland", "en_NZ", 1, 4},
        {"Asia/Tokyo", "ja_JP", 1, 1},       {"Asia/Tokyo", "en_US", 2, 4},
        {"Europe/Berlin", "th_TH", 1, 1},
    };
    return list;
}

Calendar calendarFor(const std::string& zone, const std::string& locale,
                     std::optional<int> firstWeekday = {}, std::optional<int> minimalDays = {}) {
    return Calendar(tidemark::testing::zoneEnvironment(zone, locale, firstWeekday, minimalDays));
}

struct Scene {
    const Place* place;
    std::unique_ptr<Calendar> calendar;
};

std::vector<Scene> makeScenes() {
    std::vector<Scene> scenes;
    for (const Place& place : places()) {
        scenes.push_back(
            Scene{&place, std::make_unique<Calendar>(calendarFor(
                              place.zone, place.locale, place.firstWeekday, place.minimalDays))});
    }
    return scenes;
}

std::string describe(const DateComponents& c) {
    std::ostringstream out;
    PrintTo(c, &out);
    return out.str();
}

std::string describe(const CivilDate& d) {
    return std::to_string(d.year) + '-' + std::to_string(d.month) + '-' + std::to_string(d.day);
}

std::string describe(const EventFields& e) {
    std::ostringstream out;
    out << "type " << e.eventType << ", start " << e.eventStartDateYear << '-'
        << e.eventStartDateMonth << '-' << e.eventStartDateDay << ", time "
        << e.eventDateWhenEveryDayHour << ':' << e.eventDateWhenEveryDayMin;
    if (e.eventHaveCustomizeInterval) {
        out << ", skipped units " << e.eventDateWhenCustomizeRepeatTimes;
    }
    if (e.eventHaveEndDateOrNot) {
        out << ", end " << e.eventEndDateYear << '-' << e.eventEndDateMonth << '-'
            << e.eventEndDateDay;
    }
    const auto codes = [&](const char* name, const Bytes& bytes) {
        if (!bytes.empty()) {
            out << ", " << name << " [";
            for (const std::int64_t code : decodeDayListArchive(bytes)) {
                out << ' ' << code;
            }
            out << " ]";
        }
    };
    codes("week codes", e.eventDateWhenEveryWeek);
    codes("month codes", e.eventDateWhenEveryMonth);
    return out.str();
}

/// The moments a case is asked about: local wall times on a day, chosen near the edges.
DateComponents wallTime(Random& random, std::int64_t days) {
    const CivilDate date = civilFromDays(days);
    DateComponents c;
    c.year = date.year;
    c.month = date.month;
    c.day = date.day;
    // Midnight, the last second, the first second, the hours in which clocks change, any time.
    const std::vector<std::vector<std::int64_t>> edges = {{0, 0, 0}, {23, 59, 59}, {0, 0, 1}};
    const std::int64_t kind = random.between(0, 5);
    const std::vector<std::int64_t> time =
        kind < 3    ? edges[static_cast<std::size_t>(kind)]
        : kind == 3 ? std::vector<std::int64_t>{random.between(1, 3),
                                                random.pick<std::int64_t>({0, 30, 59}), 0}
                    : std::vector<std::int64_t>{random.between(0, 23), random.between(0, 59),
                                                random.between(0, 59)};
    c.hour = time[0], c.minute = time[1], c.second = time[2];
    return c;
}

/// Whether a month-day code of 29 to 31 ever finds a month long enough on its walk; rules that
/// never do make the walk give up only after thousands of passes, so the generator avoids them.
bool everLands(std::int64_t year, std::int64_t firstMonth, std::int64_t step, std::int64_t code) {
    if (code < 29 || code > 31) {
        return true;
    }
    for (std::int64_t k = 0; k < 4800; ++k) {
        const std::int64_t n = year * 12 + firstMonth - 1 + k * step;
        if (daysInMonth(floorDiv(n, 12), floorMod(n, 12) + 1) >= code) {
            return true;
        }
    }
    return false;
}

class Generator {
public:
    Generator(Random& random, const Calendar& calendar) : random_(random), calendar_(calendar) {}

    /// A day of interest: any day in 1990-2045, or one near a clock change or a turn of year.
    std::int64_t anchorDay() {
        const std::int64_t year = random_.between(1990, 2045);
        const int kind = static_cast<int>(random_.between(0, 9));
        if (kind < 3) {
            const double from = static_cast<double>(daysFromCivil(year, 1, 1)) * 86400.0;
            const auto transitions =
                calendar_.zoneTransitions(Date{from}, Date{from + 366 * 86400.0});
            if (transitions && !transitions->empty()) {
                const double at = random_.pick(*transitions).utcMillis / 1000.0;
                return floorDiv(static_cast<std::int64_t>(at), 86400) + random_.between(-2, 2);
            }
        }
        if (kind < 5) {
            return daysFromCivil(year, 12, 31) + random_.between(-7, 8);
        }
        return daysFromCivil(year, 1, 1) + random_.between(0, 365);
    }

    std::vector<std::int64_t> codes(bool weekly) {
        std::vector<std::int64_t> result;
        const std::int64_t count = weekly ? random_.between(1, random_.chance(20) ? 7 : 3)
                                          : random_.between(1, random_.chance(20) ? 6 : 4);
        for (std::int64_t i = 0; i < count; ++i) {
            if (!result.empty() && random_.chance(10)) {
                result.push_back(random_.pick(result)); // a doubled code
            } else if (weekly) {
                result.push_back(random_.between(1, 7));
            } else if (random_.chance(25)) {
                result.push_back(civilFromDays(anchor_ + random_.between(-3, 3)).day);
            } else if (random_.chance(15)) {
                result.push_back(99);
            } else if (random_.chance(30)) {
                result.push_back(random_.between(28, 31));
            } else {
                result.push_back(random_.between(1, 31));
            }
        }
        if (random_.chance(2)) {
            result.push_back(weekly ? random_.pick<std::int64_t>({0, 8}) // out of range
                                    : random_.pick<std::int64_t>({0, 32, 45, -1}));
        }
        return result;
    }

    /// A rule whose walk reaches the anchor within a few hundred passes.
    EventFields event(std::int64_t anchor) {
        anchor_ = anchor;
        EventFields e;
        e.eventId = "event-" + std::to_string(serial_++);
        e.eventType =
            random_.chance(2) ? random_.pick<std::int64_t>({-1, 5}) : random_.between(0, 4);
        e.eventRepeatOrNot = e.eventType != 0;
        e.eventNotiOrNot = random_.chance(70);
        e.eventHaveCustomizeInterval = random_.chance(40);
        std::int64_t reach = 0; // how far back the start may lie, in days
        switch (e.eventType) {
        case 1:
            e.eventDateWhenCustomizeRepeatTimes = random_.between(0, 6);
            reach = 150;
            break;
        case 2:
            e.eventDateWhenCustomizeRepeatTimes = random_.between(0, 3);
            reach = 900;
            break;
        case 3:
            e.eventDateWhenCustomizeRepeatTimes =
                random_.chance(10) ? 11 : random_.between(0, 5); // step 12 now and then
            reach = 2500;
            break;
        default:
            e.eventDateWhenCustomizeRepeatTimes = random_.between(0, 4);
            reach = 40 * 365;
            break;
        }
        if (!e.eventHaveCustomizeInterval && random_.chance(30)) {
            e.eventDateWhenCustomizeRepeatTimes = random_.between(0, 9); // read only when set
        }
        const std::int64_t step =
            e.eventHaveCustomizeInterval ? e.eventDateWhenCustomizeRepeatTimes + 1 : 1;

        // Start: mostly before the anchor, now and then after it; at month ends, in leap years.
        std::int64_t startDay = anchor - random_.between(0, reach);
        if (random_.chance(10)) {
            startDay = anchor + random_.between(0, 60);
        }
        CivilDate start = civilFromDays(startDay);
        if (random_.chance(50) && (e.eventType == 0 || e.eventType == 4)) {
            // Near the anchor's day of the year, so that the days asked about meet it.
            const CivilDate near = civilFromDays(anchor + random_.between(-4, 4));
            start.month = near.month;
            start.day = near.day;
            if (e.eventType == 0) {
                start.year = near.year;
            }
        }
        if (random_.chance(20)) {
            start.day = random_.between(28, 31); // may spill into the next month
        }
        if (random_.chance(5)) {
            start.month = random_.pick<std::int64_t>({0, 13, 14});
            start.day = random_.between(0, 32);
        }
        if (random_.chance(3)) {
            start.year = 2024, start.month = 2, start.day = 29;
        }
        e.eventStartDateYear = start.year;
        e.eventStartDateMonth = start.month;
        e.eventStartDateDay = start.day;

        // 00:00, 23:59, 02:30 (in the hour clocks change) or any time.
        const std::int64_t time = random_.between(0, 5);
        e.eventDateWhenEveryDayHour =
            time < 3 ? std::array{0, 23, 2}[time] : random_.between(0, 23);
        e.eventDateWhenEveryDayMin =
            time < 3 ? std::array{0, 59, 30}[time] : random_.between(0, 59);
        if (random_.chance(1)) {
            e.eventDateWhenEveryDayHour = random_.pick<std::int64_t>({24, 25, -1});
        }

        if (random_.chance(30)) {
            e.eventHaveEndDateOrNot = true;
            const CivilDate end = civilFromDays(anchor + random_.between(-60, 400));
            e.eventEndDateYear = end.year;
            e.eventEndDateMonth = end.month;
            e.eventEndDateDay = random_.chance(10) ? random_.between(28, 32) : end.day;
        }

        if (e.eventType == 2 || random_.chance(3)) {
            e.eventDateWhenEveryWeek = encodeDayListArchive(codes(true));
        }
        if (e.eventType == 3 || random_.chance(3)) {
            std::vector<std::int64_t> list;
            // The walk's first month is the month of the composed start.
            const CivilDate composed = civilFromDays(
                daysFromCivil(e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay));
            do {
                list = codes(false);
            } while (!std::all_of(list.begin(), list.end(), [&](std::int64_t code) {
                return everLands(e.eventStartDateYear, composed.month, step, code);
            }));
            e.eventDateWhenEveryMonth = encodeDayListArchive(list);
        }
        return e;
    }

private:
    Random& random_;
    const Calendar& calendar_;
    std::int64_t anchor_ = 0;
    int serial_ = 0;
};

struct Failures {
    std::uint64_t seed;
    int count = 0;

    void report(const std::string& what) {
        if (++count <= 10) {
            ADD_FAILURE() << "seed " << seed << ": " << what;
        }
    }
};

TEST(EngineDifferential, BatchAnswersAreTheWalks) {
    const auto seed =
        static_cast<std::uint64_t>(envInt("TIDEMARK_DIFFERENTIAL_SEED", kDefaultSeed));
    const std::int64_t dayCases =
        std::max<std::int64_t>(1, envInt("TIDEMARK_DIFFERENTIAL_CASES", kDefaultDayCases));
    std::cout << "differential seed " << seed << ", " << dayCases << " day cases\n";
    Random random(seed);
    const std::vector<Scene> scenes = makeScenes();
    Failures failures{seed};

    std::int64_t dayQuestions = 0, dayHits = 0, runQuestions = 0, listQuestions = 0,
                 listElements = 0, plans = 0;
    std::int64_t round = 0;
    while (dayQuestions < dayCases && failures.count == 0) {
        ++round;
        const Scene& scene = scenes[static_cast<std::size_t>(
            random.between(0, static_cast<std::int64_t>(scenes.size()) - 1))];
        const Calendar& calendar = *scene.calendar;
        Generator generator(random, calendar);
        const std::int64_t anchor = generator.anchorDay();

        std::vector<EventFields> events;
        for (int i = 0; i < 24; ++i) {
            events.push_back(generator.event(anchor));
        }
        const RuleBatch batch(events, calendar);
        const auto where = [&](const std::string& asked) {
            return "round " + std::to_string(round) + " in " + scene.place->zone + " (" +
                   scene.place->locale + ", first weekday " +
                   std::to_string(scene.place->firstWeekday) + ", minimal days " +
                   std::to_string(scene.place->minimalDays) + "), " + asked;
        };

        // Day questions: the whole batch for days around the anchor, at edge times of day.
        for (int d = 0; d < 5; ++d) {
            const DateComponents wall = wallTime(random, anchor + random.between(-3, 3));
            const Date date = unwrap(calendar.date(wall));
            std::vector<std::size_t> expected;
            for (std::size_t i = 0; i < events.size(); ++i) {
                if (eventHappensOnDay(events[i], date, calendar)) {
                    expected.push_back(i);
                }
            }
            const std::vector<std::size_t> actual = batch.indicesOnDate(date);
            dayQuestions += static_cast<std::int64_t>(events.size());
            dayHits += static_cast<std::int64_t>(expected.size());
            if (actual != expected) {
                for (std::size_t i = 0; i < events.size(); ++i) {
                    const bool want = std::count(expected.begin(), expected.end(), i) > 0;
                    const bool got = std::count(actual.begin(), actual.end(), i) > 0;
                    if (want != got) {
                        failures.report(where("day " + describe(wall)) + ", event " +
                                        describe(events[i]) + ": walk " + std::to_string(want) +
                                        ", batch " + std::to_string(got));
                    }
                }
            }
        }

        // A run of consecutive days through the anchor, asked at once: a short one, and now and
        // then a month view's 42.
        {
            const std::int64_t length = round % 32 == 0 ? 42 : random.between(1, 8);
            const std::int64_t from = anchor - random.between(0, length - 1);
            std::vector<Date> dates;
            for (std::int64_t d = 0; d < length; ++d) {
                dates.push_back(unwrap(calendar.date(wallTime(random, from + d))));
            }
            const auto actual = batch.indicesOnDates(dates);
            for (std::size_t d = 0; d < dates.size(); ++d) {
                std::vector<std::size_t> expected;
                for (std::size_t i = 0; i < events.size(); ++i) {
                    if (eventHappensOnDay(events[i], dates[d], calendar)) {
                        expected.push_back(i);
                    }
                }
                runQuestions += static_cast<std::int64_t>(events.size());
                for (std::size_t i = 0; actual[d] != expected && i < events.size(); ++i) {
                    const bool want = std::count(expected.begin(), expected.end(), i) > 0;
                    const bool got = std::count(actual[d].begin(), actual[d].end(), i) > 0;
                    if (want != got) {
                        failures.report(where("day " + std::to_string(d) + " of a run of " +
                                              std::to_string(length) + " from " +
                                              describe(civilFromDays(from))) +
                                        ", event " + describe(events[i]) + ": walk " +
                                        std::to_string(want) + ", batch " + std::to_string(got));
                    }
                }
            }
        }

        // Lists: one moment near the anchor, every event.
        const DateComponents wall = wallTime(random, anchor + random.between(-2, 2));
        const Date now = unwrap(calendar.date(wall));
        for (std::size_t i = 0; i < events.size(); ++i) {
            const auto expected = occurrenceList(events[i], now, calendar);
            const auto actual = batch.occurrences(i, now);
            ++listQuestions;
            listElements += static_cast<std::int64_t>(expected.size());
            if (actual != expected) {
                const auto [w, b] =
                    std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
                failures.report(where("now " + describe(wall)) + ", event " + describe(events[i]) +
                                ": walk " + std::to_string(expected.size()) + " elements, batch " +
                                std::to_string(actual.size()) + "; first difference at " +
                                std::to_string(w - expected.begin()) + ": walk " +
                                (w != expected.end() ? describe(*w) : "-") + ", batch " +
                                (b != actual.end() ? describe(*b) : "-"));
            }
        }
        std::vector<const EventFields*> pointers;
        for (const EventFields& e : events) {
            pointers.push_back(&e);
        }
        ++plans;
        if (batch.planOccurrences(now) != planOccurrencesByWalk(pointers, now, calendar)) {
            failures.report(where("plan at " + describe(wall)) + ": the plans differ");
        }
    }
    std::cout << "asked " << dayQuestions << " day questions (" << dayHits << " on the day), "
              << runQuestions << " in runs of days, " << listQuestions << " lists (" << listElements
              << " elements), " << plans << " plans\n";
    EXPECT_EQ(failures.count, 0) << "seed " << seed << ": " << failures.count << " mismatches";
    EXPECT_GE(dayQuestions, dayCases);
}

// The arithmetic under the batch, checked against the calendar directly for days spread over
// four centuries and every week rule.
TEST(EngineDifferential, DayNumbersAndWeeksAreTheCalendars) {
    Random random(kDefaultSeed);
    for (int firstWeekday = 1; firstWeekday <= 7; ++firstWeekday) {
        for (int minimalDays = 1; minimalDays <= 7; minimalDays += 3) {
            const Calendar calendar = calendarFor("UTC", "en_US", firstWeekday, minimalDays);
            const LocalClock clock(calendar);
            ASSERT_TRUE(clock.usable());
            for (int i = 0; i < 400; ++i) {
                const std::int64_t days = i < 40 ? daysFromCivil(1610 + i * 10, 12, 31) + i % 7
                                                 : random.between(-130'000, 200'000);
                const Date moment{static_cast<double>(days) * 86400.0};
                const DateComponents parts = calendar.dateComponents(
                    kYear | kMonth | kDay | kWeekOfYear | kWeekday | kYearForWeekOfYear, moment);
                const CivilDate date = civilFromDays(days);
                ASSERT_EQ(date.year, *parts.year);
                ASSERT_EQ(date.month, *parts.month);
                ASSERT_EQ(date.day, *parts.day);
                ASSERT_EQ(weekdayOfDays(days), *parts.weekday);
                ASSERT_EQ(clock.weekRules().weekOfYear(days), *parts.weekOfYear)
                    << date.year << '-' << date.month << '-' << date.day << " first weekday "
                    << firstWeekday << " minimal days " << minimalDays;
                DateComponents week;
                week.year = *parts.yearForWeekOfYear;
                week.weekOfYear = *parts.weekOfYear + random.between(-60, 60);
                week.weekday = random.between(1, 7);
                const Date composed = unwrap(calendar.date(week));
                ASSERT_EQ(static_cast<double>(clock.weekRules().dayOfWeek(
                              *week.year, *week.weekOfYear, *week.weekday)) *
                              86400.0,
                          composed.secondsSince1970);
                ASSERT_EQ(daysInMonth(date.year, date.month + 13),
                          lastDayOfMonth(date.year, date.month + 13, calendar));
            }
        }
    }
}

// The clock's moments against the calendar's compositions, every minute of the days around the
// clock changes of a few years, and the refusal of what it can't stand for.
TEST(EngineDifferential, LocalClockMatchesCompositionAroundClockChanges) {
    for (const char* zone : {"Europe/Berlin", "America/New_York", "Pacific/Auckland",
                             "America/Santiago", "Australia/Lord_Howe"}) {
        const Calendar calendar = calendarFor(zone, "en_US");
        const LocalClock clock(calendar);
        const auto transitions = calendar.zoneTransitions(
            Date{static_cast<double>(daysFromCivil(2019, 1, 1)) * 86400.0},
            Date{static_cast<double>(daysFromCivil(2041, 1, 1)) * 86400.0});
        ASSERT_TRUE(transitions.has_value());
        ASSERT_FALSE(transitions->empty()) << zone;
        for (std::size_t t = 0; t < transitions->size(); t += 5) {
            const std::int64_t day =
                floorDiv(static_cast<std::int64_t>((*transitions)[t].utcMillis / 1000), 86400);
            for (std::int64_t d = day - 1; d <= day + 1; ++d) {
                const CivilDate date = civilFromDays(d);
                for (std::int64_t minute = 0; minute < 24 * 60; minute += 7) {
                    DateComponents c;
                    c.year = date.year;
                    c.month = date.month;
                    c.day = date.day;
                    c.hour = minute / 60;
                    c.minute = minute % 60;
                    const Date expected = unwrap(calendar.date(c));
                    const Date actual = clock.moment(d, minute * kMillisPerMinute);
                    ASSERT_EQ(expected, actual) << zone << ' ' << describe(c);
                }
            }
        }
        EXPECT_TRUE(clock.consistent()) << zone;
    }

    EXPECT_FALSE(LocalClock(calendarFor("Europe/Berlin", "th_TH")).usable());

    const Calendar calendar = calendarFor("Europe/Berlin", "en_US");
    const LocalClock clock(calendar);
    clock.moment(daysFromCivil(1500, 6, 1), 0);
    EXPECT_FALSE(clock.consistent()) << "a year before 1600 must not be answered by arithmetic";
}

// Monthly rules whose codes never find a long enough month make the walk give up after
// thousands of passes; the batch must give up the same way, and before a later code is looked at.
TEST(EngineDifferential, RulesThatNeverLandGiveUpLikeTheWalk) {
    const Calendar calendar = calendarFor("Europe/Berlin", "en_US");
    struct Case {
        std::int64_t year, month, day, skippedUnits;
        std::vector<std::int64_t> codes;
    };
    const std::vector<Case> cases = {
        {2026, 2, 10, 11, {30}},     // every February: never 30 days
        {2026, 2, 10, 11, {30, 15}}, // the walk gives up before it reaches code 15
        {2026, 2, 10, 11, {15, 30}}, // code 15 answers first where it matches
        {2025, 4, 1, 11, {31}},      // every April
        {2001, 2, 1, 47, {29, 99}},  // every fourth February from 2001: never a leap year
        {2026, 2, 10, 11, {29, 10}}, // lands in leap years: not a rule that never lands
    };
    std::vector<EventFields> events;
    for (const Case& c : cases) {
        events.push_back(tidemark::testing::withStep(
            tidemark::testing::monthlyEvent(c.year, c.month, c.day, c.codes), c.skippedUnits));
    }
    const RuleBatch batch(events, calendar);
    int matched = 0;
    for (const auto& [y, m, d] : {std::tuple{2027, 2, 15}, std::tuple{2028, 2, 10},
                                  std::tuple{2028, 2, 29}, std::tuple{2026, 2, 10}}) {
        DateComponents day;
        day.year = y;
        day.month = m;
        day.day = d;
        const Date date = unwrap(calendar.date(day));
        for (std::size_t i = 0; i < events.size(); ++i) {
            const bool walk = eventHappensOnDay(events[i], date, calendar);
            matched += walk ? 1 : 0;
            EXPECT_EQ(batch.happensOnDay(i, date), walk)
                << describe(events[i]) << " on " << y << '-' << m << '-' << d;
        }
    }
    EXPECT_GT(matched, 0) << "some of these days must be matched by the rules that land";
}

// The quick list reader answers for the archives that the archiver writes, and wherever it
// answers, also for damaged ones, it answers as the full reader does.
TEST(EngineDifferential, QuickListReaderAgreesWithTheArchiveReader) {
    Random random(kDefaultSeed);
    const std::vector<std::int64_t> special = {
        0,     1,  7,    31,         99,         255,        256,       65535,
        65536, -1, -128, 2147483647, 4294967295, 4294967296, INT64_MIN, INT64_MAX};
    int answered = 0;
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::int64_t> values;
        const std::int64_t length = random.between(0, i % 10 == 0 ? 60 : 8);
        for (std::int64_t k = 0; k < length; ++k) {
            values.push_back(random.chance(20) ? random.pick(special) : random.between(-5, 120));
        }
        Bytes archive = encodeDayListArchive(values);
        const auto quick = readCanonicalDayList(archive);
        ASSERT_TRUE(quick.has_value()) << "the archiver's own output must be read quickly";
        const DayListReadResult full = readDayListArchive(archive);
        ASSERT_FALSE(full.error.has_value());
        ASSERT_EQ(*quick, full.values);
        ASSERT_EQ(*quick, values);

        // Damage: a changed byte, a cut, an inserted byte.
        const auto position = static_cast<std::size_t>(
            random.between(0, static_cast<std::int64_t>(archive.size()) - 1));
        switch (random.between(0, 2)) {
        case 0:
            archive[position] = static_cast<std::uint8_t>(random.between(0, 255));
            break;
        case 1:
            archive.resize(position);
            break;
        default:
            archive.insert(archive.begin() + static_cast<std::ptrdiff_t>(position),
                           static_cast<std::uint8_t>(random.between(0, 255)));
            break;
        }
        if (const auto damaged = readCanonicalDayList(archive)) {
            ++answered;
            const DayListReadResult reference = readDayListArchive(archive);
            ASSERT_FALSE(reference.error.has_value()) << "case " << i;
            ASSERT_EQ(*damaged, reference.values) << "case " << i;
        }
    }
    std::cout << answered << " damaged archives were still read quickly\n";
}

} // namespace

// A month view's answers from the kept store results and rules, after each thing that may change
// them: they must be those of a fresh read and a fresh batch, and the rules are compiled anew
// exactly when something they depend on changed.
TEST(EngineDifferential, KeptMonthAnswersAreNeverStale) {
    tidemark::testing::TempDir dir;
    const auto path = dir.path() / "kept.sqlite";
    const auto write = [&](std::string id, std::int64_t type, std::int64_t day) {
        eventInfo e;
        e.eventId = std::move(id);
        e.eventType = type;
        e.eventStartDateYear = 2026, e.eventStartDateMonth = 3, e.eventStartDateDay = day;
        e.eventDateWhenEveryWeek = encodeDayListArchive({2, 6});
        Store store = Store::open(path);
        store.write([&] { store.add(e); });
    };
    const auto clock = [](const char* zone, int day, int hour, int minute, int second) {
        setCalendarEnvironment(
            tidemark::testing::fixedEnvironment(zone, "de_DE", 2026, 3, day, hour, minute, second));
    };
    write("A", 0, 10);
    write("B", 2, 3);
    const ScopedCalendarEnvironment scoped(calendarEnvironment());
    clock("Europe/Berlin", 20, 23, 59, 59);
    std::vector<Date> days;
    for (int d = 0; d < 42; ++d) {
        days.push_back(tidemark::testing::localDate(2026, 2, 23 + d));
    }
    KeptRuleBatch kept;
    const auto ask = [&] {
        return kept.over(Results<eventInfo>(Query{}, path).shared(), Calendar::current())
            .indicesOnDates(days);
    };
    const auto fresh = [&] {
        const auto events = Store::open(path).objects<eventInfo>();
        return RuleBatch(events, Calendar::current()).indicesOnDates(days);
    };
    struct Step {
        const char* what;
        std::function<void()> change;
        bool answersMove; ///< whether a fresh batch answers otherwise afterwards
        bool compiled;    ///< whether the rules must be compiled anew
    };
    const std::vector<Step> steps = {
        {"nothing", [] {}, false, false},
        {"a commit on this thread", [&] { write("C", 0, 12); }, true, true},
        {"a commit to another table",
         [&] {
             Store store = Store::open(path);
             store.write([&] { store.add(memoDataForNotiObject{}); });
         },
         false, false},
        {"a commit on another thread", [&] { std::thread([&] { write("A", 0, 14); }).join(); },
         true, true},
        {"a commit by another process",
         [&] {
             const pid_t pid = fork();
             if (pid == 0) {
                 sqlite3* db = nullptr;
                 _exit(sqlite3_open(path.c_str(), &db) == SQLITE_OK &&
                               sqlite3_exec(db, "UPDATE eventInfo SET eventStartDateDay = 16",
                                            nullptr, nullptr, nullptr) == SQLITE_OK
                           ? 0
                           : 1);
             }
             int status = 1;
             ASSERT_EQ(waitpid(pid, &status, 0), pid);
             ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
         },
         true, true},
        {"a zone change", [&] { clock("America/Los_Angeles", 20, 23, 59, 59); }, true, true},
        {"midnight", [&] { clock("America/Los_Angeles", 21, 0, 0, 1); }, false, true},
    };
    auto before = fresh();
    ASSERT_EQ(ask(), before);
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        const std::uint64_t compiles = kept.compiles();
        step.change();
        const auto expected = fresh();
        EXPECT_EQ(expected != before, step.answersMove);
        EXPECT_EQ(ask(), expected);
        EXPECT_EQ(kept.compiles() - compiles, step.compiled ? 1u : 0u);
        before = expected;
    }
}
