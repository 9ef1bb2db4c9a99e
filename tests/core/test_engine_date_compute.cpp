// eventDateCompute over a real store: lookups by id and type, store order of the day queries,
// and the small helpers (lists from archives, month lengths, date strings).
#include "engine/eventDateCompute.h"
#include "test_engine_support.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

class EventDateComputeTest : public ::testing::Test {
protected:
    IsolatedStorage storage;
    ScopedCalendarEnvironment env{Scene{}.environment()};
};

TEST_F(EventDateComputeTest, ListsLookUpByIdAndType) {
    storeAll({stored("daily", dailyEvent(2026, 3, 1, 9, 0)),
              stored("weekly", weeklyEvent(2026, 3, 3, {2})),
              stored("monthly", monthlyEvent(2026, 1, 1, {20})),
              stored("yearly", makeEvent(4, 2000, 3, 10)),
              stored("oneOff", makeEvent(0, 2020, 5, 1)),
              stored("other", makeEvent(6, 2026, 3, 10))});
    const eventDateCompute engine;

    const auto daily = engine.nextEventDateForType1Event("daily");
    ASSERT_EQ(daily.size(), 100u);
    EXPECT_EQ(daily.front(), ymdhm(2026, 3, 10, 9, 0));
    EXPECT_TRUE(sameList(engine.nextEventDateForType2Event("weekly"),
                         series(0, 19, [](int i) { return ymd(2026, 3, 3 + (i + 1) * 7); })));
    EXPECT_TRUE(sameList(engine.nextEventDateForType3Event("monthly"),
                         series(3, 8, [](int m) { return ymd(2026, m, 20); })));
    EXPECT_TRUE(sameList(engine.nextEventDateForType4Event("yearly"),
                         series(2026, 2125, [](int y) { return ymd(y, 3, 10); })));
    EXPECT_TRUE(sameList(engine.nextEventDateForType4Event("oneOff"),
                         series(2026, 2125, [](int y) { return ymd(y, 5, 1); })));

    // Wrong type, unknown id, and a type that has no list.
    EXPECT_TRUE(engine.nextEventDateForType1Event("weekly").empty());
    EXPECT_TRUE(engine.nextEventDateForType4Event("monthly").empty());
    EXPECT_TRUE(engine.nextEventDateForType4Event("other").empty());
    EXPECT_TRUE(engine.nextEventDateForType1Event("missing").empty());
}

TEST_F(EventDateComputeTest, DayQueriesKeepStoreOrder) {
    // Inserted out of alphabetical order; "late" and "odd" do not fall on 10 March.
    storeAll({stored("c", makeEvent(0, 2026, 3, 10)), stored("late", makeEvent(0, 2026, 3, 11)),
              stored("a", weeklyEvent(2026, 3, 3, {2})), stored("odd", makeEvent(8, 2026, 3, 10)),
              stored("b", withStep(dailyEvent(2026, 3, 1, 23, 0), 2))});
    const eventDateCompute engine;
    const Date tenth = localDate(2026, 3, 10, 17, 45);

    EXPECT_EQ(engine.eventIdsOnDate(tenth), (std::vector<std::string>{"c", "a", "b"}));
    EXPECT_EQ(engine.eventIdsOnDate(), (std::vector<std::string>{"c", "a", "b"}));
    EXPECT_EQ(engine.eventIdsOnDate(localDate(2026, 3, 11)), (std::vector<std::string>{"late"}));
    const auto events = engine.eventsOnDate(tenth);
    ASSERT_EQ(idsOf(events), (std::vector<std::string>{"c", "a", "b"}));
    EXPECT_EQ(events[2], stored("b", withStep(dailyEvent(2026, 3, 1, 23, 0), 2)));

    EXPECT_TRUE(engine.eventHappensOnDate("c", tenth));
    EXPECT_FALSE(engine.eventHappensOnDate("late", tenth));
    EXPECT_FALSE(engine.eventHappensOnDate("odd", tenth));
    EXPECT_FALSE(engine.eventHappensOnDate("missing", tenth));
}

TEST_F(EventDateComputeTest, DayQueriesSeeLaterWrites) {
    const eventDateCompute engine;
    EXPECT_TRUE(engine.eventIdsOnDate().empty());
    storeAll({stored("x", makeEvent(0, 2026, 3, 10))});
    EXPECT_EQ(engine.eventIdsOnDate(), (std::vector<std::string>{"x"}));
}

TEST_F(EventDateComputeTest, NextFewDaysOncePerOccurrence) {
    storeAll({stored("weekly", weeklyEvent(2026, 3, 3, {2, 2})),
              stored("daily", dailyEvent(2026, 3, 1, 9, 0)),
              stored("yearly", makeEvent(4, 2020, 3, 11)),
              stored("odd", makeEvent(8, 2026, 3, 10))});
    const eventDateCompute engine;
    EXPECT_EQ(idsOf(engine.eventsForNextFewDays(0)),
              (std::vector<std::string>{"weekly", "weekly", "daily"}));
    EXPECT_EQ(idsOf(engine.eventsForNextFewDays(1)), (std::vector<std::string>{"daily", "yearly"}));
    EXPECT_EQ(idsOf(engine.eventsForNextFewDays(7)),
              (std::vector<std::string>{"weekly", "weekly", "daily"}));
}

TEST_F(EventDateComputeTest, Helpers) {
    const eventDateCompute engine;
    EXPECT_EQ(engine.lastDayOfMonth(2027, 14), 29);
    EXPECT_EQ(
        engine.datesFromComponents({ymd(2026, 1, 35), ymdhm(2026, 3, 10, 9, 30), ymd(2026, 13, 0)}),
        (std::vector<Date>{localDate(2026, 2, 4), localDate(2026, 3, 10, 9, 30),
                           localDate(2026, 12, 31)}));
}

TEST_F(EventDateComputeTest, DateStrings) {
    const eventDateCompute engine;
    const std::int64_t hugeYear = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(engine.shortDateString(2026, 3, 10), "Mar 10");
    EXPECT_EQ(engine.fullDateString(2026, 2, 30), "Mar 2, 2026");
    EXPECT_EQ(engine.fullDateString(hugeYear, 1, 1), "");
    EXPECT_EQ(engine.shortDateString(hugeYear, 1, 1), "");
}

TEST_F(EventDateComputeTest, FatalStops) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const eventDateCompute engine;
    EXPECT_DEATH(engine.datesFromComponents(
                     {ymd(2026, 3, 10), ymd(std::numeric_limits<std::int64_t>::max(), 1, 1)}),
                 "Unexpectedly found nil while unwrapping an Optional value");
    EXPECT_DEATH(engine.lastDayOfMonth(2026, std::numeric_limits<std::int64_t>::max()),
                 "Arithmetic overflow");
    EXPECT_DEATH(engine.eventsForNextFewDays(std::numeric_limits<std::int64_t>::max()),
                 "Arithmetic overflow");
}

} // namespace
