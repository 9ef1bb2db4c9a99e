// Which events fall on a given day: the walks from the start date, and the forward lists filtered
// for a day counted from today. The two disagree in places, and both answers are checked.
#include "engine/Occurrences.h"
#include "test_engine_support.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

struct Day {
    int year, month, day, hour = 12, minute = 0;
    bool expected;
};

struct DayCase {
    std::string name;
    Scene scene;
    EventFields event;
    std::vector<Day> days;
};

void PrintTo(const DayCase& c, std::ostream* os) {
    *os << c.name;
}

class HappensOnDayTest : public ::testing::TestWithParam<DayCase> {};

TEST_P(HappensOnDayTest, AnswersEachDay) {
    const DayCase& c = GetParam();
    ScopedCalendarEnvironment env(c.scene.environment());
    for (const Day& d : c.days) {
        const Date date = localDate(d.year, d.month, d.day, d.hour, d.minute);
        EXPECT_EQ(eventHappensOnDay(c.event, date, Calendar::current()), d.expected)
            << d.year << "-" << d.month << "-" << d.day << " " << d.hour << ":" << d.minute;
    }
}

Day yes(int y, int m, int d, int h = 12, int min = 0) {
    return {y, m, d, h, min, true};
}
Day no(int y, int m, int d, int h = 12, int min = 0) {
    return {y, m, d, h, min, false};
}

std::vector<DayCase> dayCases() {
    const std::int64_t hugeYear = std::numeric_limits<std::int64_t>::max();
    return {
        // The one-off test has no start test of its own: midnight of the day before a 23-hour
        // day lies within 86400 s of the start, so that day counts too.
        {"OneOffAfterShortDay",
         Scene{},
         makeEvent(0, 2026, 3, 30),
         {yes(2026, 3, 29), yes(2026, 3, 30), no(2026, 3, 31), no(2026, 3, 28)}},
        {"OneOffAfterLongDay",
         Scene{},
         makeEvent(0, 2026, 10, 26),
         {no(2026, 10, 25), yes(2026, 10, 26)}},
        {"OneOffEndDoesNotCompose",
         Scene{},
         withEnd(makeEvent(0, 2026, 3, 10), hugeYear, 1, 1),
         {no(2026, 3, 10)}},
        // The occurrence must lie within 86400 s after the day's midnight: on a 25-hour day
        // 23:30 lies beyond, on a 23-hour day it is well inside.
        {"DailyLateEveningBerlin",
         Scene{},
         dailyEvent(2026, 1, 1, 23, 30),
         {yes(2026, 3, 28), yes(2026, 3, 29), yes(2026, 3, 30), yes(2026, 10, 24), no(2026, 10, 25),
          yes(2026, 10, 26)}},
        // A skipped time of day composes an hour later and still lies within its day.
        {"DailySkippedWallTime", Scene{}, dailyEvent(2026, 1, 1, 2, 30), {yes(2026, 3, 29)}},
        {"DailyStepZeroStaysOnItsStart",
         Scene{},
         withStep(dailyEvent(2026, 3, 1, 9, 0), -1),
         {yes(2026, 3, 1), no(2026, 3, 2), no(2027, 3, 1)}},
        {"DailyStartDoesNotCompose", Scene{}, dailyEvent(hugeYear, 1, 1, 9, 0), {no(2026, 3, 10)}},
        // Start Wednesday 11 March 2026, Sundays.
        {"SundayCodeSundayFirstWeek",
         Scene{},
         weeklyEvent(2026, 3, 11, {7}),
         {no(2026, 3, 8), no(2026, 3, 14), yes(2026, 3, 15), yes(2026, 3, 29), no(2026, 3, 30)}},
        // Start Tuesday 31 December 2024, week 1: the walk starts in January 2024 and marches
        // on week by week until it reaches the start.
        {"YearTurnStart",
         Scene{},
         weeklyEvent(2024, 12, 31, {2}),
         {no(2024, 12, 24), yes(2024, 12, 31), yes(2025, 1, 7), no(2025, 1, 8)}},
        {"Code31",
         Scene{},
         monthlyEvent(2026, 1, 1, {31}),
         {yes(2026, 1, 31), no(2026, 2, 28), no(2026, 3, 3), yes(2026, 3, 31), no(2026, 4, 30)}},
        {"Code99",
         Scene{},
         monthlyEvent(2026, 1, 1, {99}),
         {yes(2026, 2, 28), yes(2026, 3, 31), no(2026, 3, 30), yes(2028, 2, 29), no(2028, 2, 28)}},
        // Code 30 every twelve months from February never lands: the walk gives up.
        {"NeverLands",
         Scene{},
         withStep(monthlyEvent(2026, 2, 1, {30}), 11),
         {no(2026, 3, 2), no(2026, 3, 30), no(2027, 3, 2)}},
        // Code 29 every hundred years from February 2100 skips 2100, 2200 and 2300.
        {"LandsAfterLongSkip",
         Scene{},
         withStep(monthlyEvent(2100, 2, 1, {29}), 1199),
         {yes(2400, 2, 29), no(2100, 3, 1), no(2400, 3, 1)}},
        {"YearlyLeapDay",
         Scene{},
         makeEvent(4, 2024, 2, 29),
         {yes(2024, 2, 29), no(2025, 2, 28), yes(2025, 3, 1), yes(2028, 2, 29), no(2028, 3, 1)}},
        // The walk is anchored at the start year, unlike the forward list.
        {"YearlyStepTwo",
         Scene{},
         withStep(makeEvent(4, 2020, 12, 1), 1),
         {yes(2020, 12, 1), no(2021, 12, 1), yes(2024, 12, 1), yes(2026, 12, 1)}},
    };
}

INSTANTIATE_TEST_SUITE_P(Rules, HappensOnDayTest, ::testing::ValuesIn(dayCases()), CaseName());

struct FewDaysCase {
    std::string name;
    Scene scene;
    EventFields event;
    std::vector<std::pair<std::int64_t, std::int64_t>> offsetsAndCounts;
};

void PrintTo(const FewDaysCase& c, std::ostream* os) {
    *os << c.name;
}

class DayFromTodayTest : public ::testing::TestWithParam<FewDaysCase> {};

TEST_P(DayFromTodayTest, CountsTheElementsOnThatDay) {
    const FewDaysCase& c = GetParam();
    ScopedCalendarEnvironment env(c.scene.environment());
    for (const auto& [offset, count] : c.offsetsAndCounts) {
        EXPECT_EQ(occurrencesOnDayFromToday(c.event, offset, now(), Calendar::current()), count)
            << "offset " << offset;
    }
}

std::vector<FewDaysCase> fewDaysCases() {
    return {
        // Today's 09:00 has passed at 10:00: the list starts tomorrow, 99 days long.
        {"DailyTimePassed",
         Scene{.hour = 10},
         dailyEvent(2026, 3, 1, 9, 0),
         {{0, 0}, {1, 1}, {2, 1}, {99, 1}, {100, 0}}},
        // Elements at midnight: the day's own midnight is inside, the next one is not.
        {"DailyAtMidnight", Scene{}, dailyEvent(2026, 3, 1, 0, 0), {{0, 0}, {1, 1}, {2, 1}}},
        {"DoubledWeeklyCode",
         Scene{},
         weeklyEvent(2026, 3, 3, {2, 2}),
         {{0, 2}, {1, 0}, {7, 2}, {133, 2}, {140, 0}}},
        // Six monthly elements only: 10 April to 10 September.
        {"MonthlyListEnds",
         Scene{.day = 12},
         monthlyEvent(2026, 1, 1, {10}),
         {{29, 1}, {30, 0}, {182, 1}, {212, 0}}},
        {"SkippedWallTimeTomorrow",
         Scene{.day = 28, .hour = 12},
         dailyEvent(2026, 1, 1, 2, 30),
         {{1, 1}}},
        {"AucklandLongDay",
         Scene{.zone = "Pacific/Auckland", .month = 4, .day = 4, .hour = 12},
         dailyEvent(2026, 1, 1, 23, 30),
         {{0, 1}, {1, 1}, {2, 1}}},
    };
}

INSTANTIATE_TEST_SUITE_P(FewDays, DayFromTodayTest, ::testing::ValuesIn(fewDaysCases()),
                         CaseName());

TEST(DayQueries, DailyEventTodayAfterItsTime) {
    // The walk finds today's occurrence; the forward list has already moved on to tomorrow.
    ScopedCalendarEnvironment env(Scene{.hour = 10}.environment());
    const EventFields event = dailyEvent(2026, 3, 1, 9, 0);
    EXPECT_TRUE(eventHappensOnDay(event, now(), Calendar::current()));
    EXPECT_EQ(occurrencesOnDayFromToday(event, 0, now(), Calendar::current()), 0);
}

TEST(DayQueries, OneOffIsOneDayButListsAnniversaries) {
    ScopedCalendarEnvironment env(Scene{}.environment());
    const EventFields event = makeEvent(0, 2026, 3, 10);
    EXPECT_FALSE(eventHappensOnDay(event, localDate(2027, 3, 10), Calendar::current()));
    EXPECT_EQ(occurrencesOnDayFromToday(event, 365, now(), Calendar::current()), 1);
}

TEST(DayQueriesDeathTest, UnreadableCodesStop) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ScopedCalendarEnvironment env(Scene{}.environment());
    EventFields event = makeEvent(2, 2026, 3, 3);
    event.eventDateWhenEveryWeek = Bytes{'n', 'o', 't', ' ', 'a', 'n', ' ', 'a', 'r', 'c', 'h'};
    EXPECT_DEATH(eventHappensOnDay(event, localDate(2026, 3, 10), Calendar::current()),
                 "Can't encode data: ");
    event.eventType = 3;
    event.eventDateWhenEveryMonth = event.eventDateWhenEveryWeek;
    EXPECT_DEATH(occurrenceList(event, now(), Calendar::current()), "Can't encode data: ");
}

} // namespace
