// The coming occurrences of daily, weekly, monthly and yearly events, computed from event values
// at fixed moments in several zones and week rules. Expected lists are worked out by hand from the
// rules and compared element by element, absent hour and minute included.
#include "base/Fatal.h"
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

struct ListCase {
    std::string name;
    Scene scene;
    EventFields event;
    std::vector<DateComponents> expected;
};

void PrintTo(const ListCase& c, std::ostream* os) {
    *os << c.name;
}

class OccurrenceListTest : public ::testing::TestWithParam<ListCase> {};

TEST_P(OccurrenceListTest, GivesTheExpectedElements) {
    const ListCase& c = GetParam();
    ScopedCalendarEnvironment env(c.scene.environment());
    EXPECT_TRUE(sameList(occurrenceList(c.event, now(), Calendar::current()), c.expected));
}

std::vector<ListCase> dailyCases() {
    const auto at0900 = [](int y, int m, int d) { return ymdhm(y, m, d, 9, 0); };
    return {
        {"TimeIsNowTomorrowFirst", Scene{.hour = 9}, dailyEvent(2026, 3, 1, 9, 0),
         series(1, 99, [&](int i) { return at0900(2026, 3, 10 + i); })},
        {"EndTodayAfterItsTime",
         Scene{.hour = 10},
         withEnd(dailyEvent(2026, 3, 10, 9, 0), 2026, 3, 10),
         {}},
        // 8 days 23 hours since the start: 8 whole days, the grid point after them is day 10.
        {"StepThreePastStart", Scene{}, withStep(dailyEvent(2026, 3, 1, 9, 0), 2),
         series(1, 99, [&](int i) { return at0900(2026, 3, 1 + (2 + i) * 3); })},
        // Day numbers run on past the month: the last element is day 124 of January.
        {"DaysRunPastTheMonth", Scene{.month = 1}, dailyEvent(2026, 1, 25, 9, 0),
         series(0, 99, [&](int i) { return at0900(2026, 1, 25 + i); })},
        // 02:30 does not exist on 29 March in Berlin and composes to 03:30 summer time.
        {"SkippedWallTimeStillToCome", Scene{.day = 29, .hour = 3, .minute = 10},
         dailyEvent(2026, 1, 1, 2, 30),
         series(0, 99, [](int i) { return ymdhm(2026, 3, 29 + i, 2, 30); })},
        // 02:00 on 25 October is the first of the two; 02:30 is the first 02:30, still ahead.
        {"RepeatedWallTime", Scene{.month = 10, .day = 25, .hour = 2},
         dailyEvent(2026, 1, 1, 2, 30),
         series(0, 99, [](int i) { return ymdhm(2026, 10, 25 + i, 2, 30); })},
        // Across the change to summer time 29 days are 28 days and 23 hours: 28 whole days, so
        // the first grid point is 30 March at midnight, which is now itself.
        {"StepOneAcrossClockChange", Scene{.day = 30, .hour = 0},
         withStep(dailyEvent(2026, 3, 1, 0, 0), 0),
         series(1, 99, [](int i) { return ymdhm(2026, 3, 29 + i, 0, 0); })},
    };
}

INSTANTIATE_TEST_SUITE_P(Daily, OccurrenceListTest, ::testing::ValuesIn(dailyCases()), CaseName());

std::vector<ListCase> weeklyCases() {
    // Long past start Monday 6 January 2020, week 2 in both week rules. 322 whole weeks lie
    // between that week's Friday (10 January) and 14 March 2026, and also between its Monday and
    // 14 March 2026; the first candidates (13 and 9 March) are over.
    const auto fridays = [](int first) {
        return series(first, 19, [](int i) { return ymd(2020, 1, 10 + (i + 322) * 7); });
    };
    const auto mondays = series(1, 19, [](int i) { return ymd(2020, 1, 6 + (i + 322) * 7); });
    return {
        // Start Wednesday 11 March. A Sunday-first week makes 8 March the week's Sunday, before
        // the start; a Monday-first week makes it 15 March.
        {"SundayCodeSundayFirstWeek", Scene{}, weeklyEvent(2026, 3, 11, {7}),
         series(1, 19, [](int i) { return ymd(2026, 3, 8 + 7 * i); })},
        {"SundayCodeMondayFirstWeek", Scene{.locale = "de_DE"}, weeklyEvent(2026, 3, 11, {7}),
         series(0, 19, [](int i) { return ymd(2026, 3, 15 + 7 * i); })},
        {"GroupedByStoredCode", Scene{.day = 14, .hour = 10}, weeklyEvent(2020, 1, 6, {5, 1}),
         concat(fridays(1), mondays)},
        {"YesterdaysElementOverAtMidnight", Scene{.day = 14, .hour = 0},
         weeklyEvent(2020, 1, 6, {5}), fridays(1)},
        {"DoubledCodeEndCut",
         Scene{},
         withEnd(weeklyEvent(2026, 3, 3, {2, 2}), 2026, 3, 17),
         {ymd(2026, 3, 10), ymd(2026, 3, 17), ymd(2026, 3, 10), ymd(2026, 3, 17)}},
        // 31 December 2024 lies in week 1, read as week 1 of 2024: Tuesday 2 January 2024.
        {"YearTurnStartAheadIsEmpty",
         Scene{.year = 2024, .month = 12, .day = 20},
         weeklyEvent(2024, 12, 31, {2}),
         {}},
        // Past start: 114 whole weeks from 2 January 2024 reach today, 10 March 2026.
        {"YearTurnPastStart", Scene{}, weeklyEvent(2024, 12, 31, {2}),
         series(0, 19, [](int i) { return ymd(2024, 1, 2 + (i + 114) * 7); })},
    };
}

INSTANTIATE_TEST_SUITE_P(Weekly, OccurrenceListTest, ::testing::ValuesIn(weeklyCases()),
                         CaseName());

std::vector<ListCase> monthlyCases() {
    const auto inMonths = [](int year, int firstMonth, int step, int count, int day) {
        return series(0, count - 1, [=](int i) { return ymd(year, firstMonth + step * i, day); });
    };
    return {
        {"Code31SkipsShortMonths",
         Scene{.month = 1, .day = 20},
         monthlyEvent(2026, 1, 15, {31}),
         {ymd(2026, 1, 31), ymd(2026, 3, 31), ymd(2026, 5, 31), ymd(2026, 7, 31), ymd(2026, 8, 31),
          ymd(2026, 10, 31)}},
        {"Code99StartAhead",
         Scene{},
         monthlyEvent(2028, 2, 10, {99}),
         {ymd(2028, 2, 29), ymd(2028, 3, 31), ymd(2028, 4, 30), ymd(2028, 5, 31), ymd(2028, 6, 30),
          ymd(2028, 7, 31)}},
        // Month 14 of 2027 is February 2028, and its last day is the 29th.
        {"Code99YearlyStepMonthsPast12",
         Scene{},
         withStep(monthlyEvent(2027, 2, 10, {99}), 11),
         {ymd(2027, 2, 28), ymd(2027, 14, 29), ymd(2027, 26, 28), ymd(2027, 38, 28),
          ymd(2027, 50, 28), ymd(2027, 62, 29)}},
        {"Codes99And31GiveEqualElements",
         Scene{},
         monthlyEvent(2026, 1, 1, {99, 31}),
         {ymd(2026, 3, 31), ymd(2026, 3, 31), ymd(2026, 4, 30), ymd(2026, 5, 31), ymd(2026, 5, 31),
          ymd(2026, 6, 30)}},
        {"EndCutRemovesEqualElementsOneByOne",
         Scene{},
         withEnd(monthlyEvent(2026, 1, 1, {99, 31}), 2026, 5, 30),
         {ymd(2026, 3, 31), ymd(2026, 3, 31), ymd(2026, 4, 30)}},
        // A past start lets the month in progress finish: 5 elements in March, then all of
        // April's ten codes.
        {"PastStartMonthInProgressFinishes", Scene{.day = 6},
         monthlyEvent(2026, 1, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}),
         concat(series(6, 10, [](int d) { return ymd(2026, 3, d); }),
                series(1, 10, [](int d) { return ymd(2026, 4, d); }))},
        {"StepTwoLookedAtInMay", Scene{.month = 5}, withStep(monthlyEvent(2026, 1, 1, {15}), 1),
         inMonths(2026, 5, 2, 6, 15)},
        {"StepZeroRepeatsOneDate", Scene{}, withStep(monthlyEvent(2026, 3, 20, {25}), -1),
         series(1, 6, [](int) { return ymd(2026, 3, 25); })},
        {"AucklandLongDayOverAt2330",
         Scene{.zone = "Pacific/Auckland", .month = 4, .day = 5, .hour = 23, .minute = 30},
         monthlyEvent(2026, 1, 1, {5}), inMonths(2026, 5, 1, 6, 5)},
    };
}

INSTANTIATE_TEST_SUITE_P(Monthly, OccurrenceListTest, ::testing::ValuesIn(monthlyCases()),
                         CaseName());

std::vector<ListCase> yearlyCases() {
    const auto years = [](int first, int last, int step, int firstYear, int month, int day) {
        return series(first, last, [=](int i) { return ymd(firstYear + step * i, month, day); });
    };
    return {
        {"OverAtNextMidnight", Scene{.day = 11, .hour = 0}, makeEvent(4, 2000, 3, 10),
         years(1, 99, 1, 2026, 3, 10)},
        {"OneOffEarlierThisYear", Scene{}, makeEvent(0, 2020, 3, 1), years(1, 99, 1, 2026, 3, 1)},
        {"LeapDayKeepsItsComponents", Scene{.year = 2027, .month = 1}, makeEvent(4, 2024, 2, 29),
         years(0, 99, 1, 2027, 2, 29)},
        // Every second year from 2020: skip 3 at 1 March 2024, so 2024 is never offered.
        {"StepTwoSkipsThisYearsGridPoint", Scene{.year = 2024, .month = 3, .day = 1},
         withStep(makeEvent(4, 2020, 12, 1), 1), years(0, 99, 2, 2026, 12, 1)},
        // The day after the change to summer time: yesterday's midnight is only 23.5 hours back.
        {"OpenAfterShortDay", Scene{.day = 30, .hour = 0, .minute = 30}, makeEvent(4, 2020, 3, 29),
         years(0, 99, 1, 2026, 3, 29)},
        // The 25-hour day: its midnight is 24.5 hours back at 23:30.
        {"OverBeforeLongDayEnds", Scene{.month = 10, .day = 25, .hour = 23, .minute = 30},
         makeEvent(4, 2020, 10, 25), years(1, 99, 1, 2026, 10, 25)},
    };
}

INSTANTIATE_TEST_SUITE_P(Yearly, OccurrenceListTest, ::testing::ValuesIn(yearlyCases()),
                         CaseName());

TEST(OccurrenceFamilies, ServeOnlyTheirOwnTypes) {
    ScopedCalendarEnvironment env(Scene{}.environment());
    const Calendar& calendar = Calendar::current();
    const Date moment = now();
    // One value that every family can read: start 3 March, Tuesdays, the 20th of each month.
    EventFields event = weeklyEvent(2026, 3, 3, {2});
    event.eventDateWhenEveryMonth = encodeDayListArchive({20});
    for (std::int64_t type : {0, 1, 2, 3, 4, 5, -1}) {
        event.eventType = type;
        EXPECT_EQ(dailyOccurrences(event, moment, calendar).empty(), type != 1) << type;
        EXPECT_EQ(weeklyOccurrences(event, moment, calendar).empty(), type != 2) << type;
        EXPECT_EQ(monthlyOccurrences(event, moment, calendar).empty(), type != 3) << type;
        EXPECT_EQ(yearlyOccurrences(event, moment, calendar).empty(), type != 0 && type != 4)
            << type;
        EXPECT_EQ(occurrenceList(event, moment, calendar).empty(), type < 0 || type > 4) << type;
    }
}

TEST(OccurrenceFamilies, DailyStartThatDoesNotComposeWithIntervalIsNoStop) {
    ScopedCalendarEnvironment env(Scene{}.environment());
    const std::int64_t hugeYear = std::numeric_limits<std::int64_t>::max();
    const auto list =
        occurrenceList(withStep(dailyEvent(hugeYear, 1, 1, 9, 0), 1), now(), Calendar::current());
    EXPECT_TRUE(
        sameList(list, series(1, 99, [&](int i) { return ymdhm(hugeYear, 1, 1 + 2 * i, 9, 0); })));
}

// Month lengths run on past month 12 and before month 1; week codes run Monday 1 to Sunday 7,
// the calendar's weekdays Sunday 1 to Saturday 7.
TEST(EngineHelpers, LastDayOfMonthAndCalendarWeekday) {
    ScopedCalendarEnvironment env(Scene{}.environment());
    struct {
        std::int64_t year, month, last;
    } months[] = {{2024, 2, 29}, {2026, 4, 30}, {2027, 14, 29}, {2026, 0, 31}, {2100, 2, 28}};
    for (const auto& c : months) {
        EXPECT_EQ(lastDayOfMonth(c.year, c.month, Calendar::current()), c.last)
            << c.year << "-" << c.month;
    }
    const std::pair<std::int64_t, std::int64_t> codes[] = {{7, 1}, {1, 2}, {6, 7}, {0, 1}, {8, 9}};
    for (const auto& [code, weekday] : codes) {
        EXPECT_EQ(calendarWeekday(code), weekday) << code;
    }
}

std::vector<DateComponents> listNow(const EventFields& event) {
    ScopedCalendarEnvironment env(Scene{}.environment());
    return occurrenceList(event, now(), Calendar::current());
}

TEST(OccurrenceDeathTest, StepZeroDividesInPastBranches) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(listNow(withStep(makeEvent(4, 2020, 12, 1), -1)), "Division by zero");
    EXPECT_DEATH(listNow(withStep(dailyEvent(2026, 3, 1, 9, 0), -1)), "Division by zero");
    EXPECT_DEATH(listNow(withStep(weeklyEvent(2026, 2, 2, {1}), -1)), "Division by zero");
}

TEST(OccurrenceDeathTest, OverflowStops) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::int64_t max = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(listNow(withStep(makeEvent(4, 2026, 3, 10), max)), "Arithmetic overflow");
    EXPECT_DEATH(listNow(withStep(weeklyEvent(2026, 3, 12, {4}), max / 7)), "Arithmetic overflow");
    EXPECT_DEATH(listNow(withStep(dailyEvent(2026, 3, 20, 9, 0), max / 2)), "Arithmetic overflow");
}

TEST(OccurrenceDeathTest, RequiredCompositionsStop) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::int64_t max = std::numeric_limits<std::int64_t>::max();
    const std::string nil = "Unexpectedly found nil";
    EXPECT_DEATH(listNow(dailyEvent(max, 1, 1, 9, 0)), nil);
    EXPECT_DEATH(listNow(weeklyEvent(max, 1, 1, {1})), nil);
    EXPECT_DEATH(listNow(monthlyEvent(max, 1, 1, {1})), nil);
    EXPECT_DEATH(listNow(makeEvent(0, max, 1, 1)), nil);
    // A month far beyond any calendar: the second month's candidate does not compose.
    EXPECT_DEATH(listNow(withStep(monthlyEvent(2026, 3, 20, {25}), max / 2)), nil);
    // An end date that does not compose stops the end cut as soon as there is an element.
    EXPECT_DEATH(listNow(withEnd(makeEvent(4, 2000, 3, 10), max, 1, 1)), nil);
}

} // namespace
