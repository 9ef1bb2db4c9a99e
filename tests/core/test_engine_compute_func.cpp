// Day counts, over tests, next-date phrases and the queries over events and memos: the pure
// rules at many moments and in several time zones, and the store-facing class on an isolated
// store.
#include "RecordSupport.h"
#include "base/Localize.h"
#include "engine/computeFunc.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

const std::string kSuffix = "StringAtComputeFuncPageForNextEventDate";

/// A local wall time in `calendar`, plus a fraction of a second.
Date wall(const Calendar& calendar, int y, int m, int d, int h = 0, int mi = 0, int s = 0,
          double fraction = 0) {
    auto date = calendar.date(dateParts(y, m, d, h, mi, s));
    EXPECT_TRUE(date.has_value());
    return date.value_or(Date{}).addingTimeInterval(fraction);
}

eventInfo oneOff(const std::string& id, int y, int m, int d) {
    return stored(id, makeEvent(0, y, m, d));
}

eventInfo repeating(const std::string& id, std::int64_t type, int y, int m, int d) {
    eventInfo e = stored(id, makeEvent(type, y, m, d));
    e.eventRepeatOrNot = true;
    return e;
}

eventInfo weekly(const std::string& id, std::vector<std::int64_t> codes) {
    return stored(id, weeklyEvent(2026, 1, 5, codes));
}

// A year beyond what the calendar holds has no date: the interval reads as 0.
constexpr int kYearWithoutDate = 100'000'000;

struct ClockCase {
    const char* zone;
    int y, m, d, h, mi, s;
    double fraction;
    int dayY, dayM, dayD; // the start (for counts) or end (for over tests)

    std::string describe() const {
        return std::string(zone) + " now " + std::to_string(y) + "-" + std::to_string(m) + "-" +
               std::to_string(d) + " " + std::to_string(h) + ":" + std::to_string(mi) + ":" +
               std::to_string(s + fraction) + ", day " + std::to_string(dayY) + "-" +
               std::to_string(dayM) + "-" + std::to_string(dayD);
    }
};

TEST(DayCountString, CountsFromTheStartMidnightInWholeDaySpans) {
    const std::pair<ClockCase, const char*> cases[] = {
        {{"Europe/Berlin", 2026, 3, 10, 10, 0, 0, 0, 2026, 3, 10}, "0"},
        {{"Europe/Berlin", 2026, 3, 10, 10, 0, 0, 0, 2026, 3, 11}, "1"},
        {{"Europe/Berlin", 2026, 3, 10, 10, 0, 0, 0, 2026, 3, 1}, "9"},
        // Exactly at a midnight, a coming date counts one more than the whole days ahead.
        {{"Europe/Berlin", 2026, 3, 12, 0, 0, 0, 0, 2026, 3, 20}, "9"},
        {{"Europe/Berlin", 2026, 3, 12, 0, 0, 1, 0, 2026, 3, 20}, "8"},
        {{"Europe/Berlin", 2026, 3, 10, 0, 0, 0, 0, 2026, 3, 9}, "1"},
        // Within one second either side of the start's own midnight.
        {{"Europe/Berlin", 2026, 3, 10, 0, 0, 0, 0.5, 2026, 3, 10}, "error"},
        {{"Europe/Berlin", 2026, 3, 9, 23, 59, 59, 0.5, 2026, 3, 10}, "error"},
        {{"Europe/Berlin", 2026, 3, 9, 23, 59, 59, 0, 2026, 3, 10}, "1"},
        {{"Europe/Berlin", 2026, 3, 10, 0, 0, 1, 0, 2026, 3, 10}, "0"},
        // New York springs forward on 8 March 2026 (23 hours), falls back on 1 November (25).
        {{"America/New_York", 2026, 3, 8, 0, 0, 0, 0, 2026, 3, 9}, "1"},
        {{"America/New_York", 2026, 3, 9, 0, 30, 0, 0, 2026, 3, 8}, "0"},
        {{"America/New_York", 2026, 3, 9, 1, 0, 0, 0, 2026, 3, 8}, "1"},
        {{"America/New_York", 2026, 11, 1, 0, 0, 0, 0, 2026, 11, 2}, "2"},
        {{"America/New_York", 2026, 11, 2, 0, 0, 0, 0, 2026, 11, 1}, "1"},
        // Lenient start numbers: 31 February 2026 is 3 March.
        {{"America/New_York", 2026, 3, 10, 10, 0, 0, 0, 2026, 2, 31}, "7"},
        {{"Europe/Berlin", 2026, 3, 10, 10, 0, 0, 0, kYearWithoutDate, 1, 1}, "error"},
    };
    for (const auto& [c, expected] : cases) {
        SCOPED_TRACE(c.describe());
        Calendar calendar(zoneEnvironment(c.zone));
        const Date now = wall(calendar, c.y, c.m, c.d, c.h, c.mi, c.s, c.fraction);
        EXPECT_EQ(dayCountString(oneOff("e", c.dayY, c.dayM, c.dayD), now, calendar), expected);
    }
}

TEST(DayCountString, RepeatingEventsHaveNoCount) {
    Calendar calendar(zoneEnvironment("Europe/Berlin"));
    const Date now = wall(calendar, 2026, 3, 10, 10);
    EXPECT_EQ(dayCountString(repeating("e", 1, 2026, 3, 20), now, calendar), "error");
    for (std::int64_t type : {0, 2, 3, 4, 5}) {
        EXPECT_EQ(dayCountString(repeating("e", type, 2026, 3, 20), now, calendar), "")
            << "type " << type;
    }
    // The type alone does not decide: a daily type without the repeat flag is counted.
    eventInfo notRepeating = oneOff("e", 2026, 3, 20);
    notRepeating.eventType = 1;
    EXPECT_EQ(dayCountString(notRepeating, now, calendar), "10");
}

TEST(EventIsOver, TheEndDayCountsInFull) {
    const std::pair<ClockCase, bool> cases[] = {
        {{"Europe/Berlin", 2026, 3, 10, 10, 0, 0, 0, 2026, 3, 9}, true},
        {{"Europe/Berlin", 2026, 3, 10, 23, 59, 59, 0.5, 2026, 3, 10}, false},
        {{"Europe/Berlin", 2026, 3, 11, 0, 0, 0, 0, 2026, 3, 10}, true},
        // After New York's 23-hour day, the test in seconds lags by that hour ...
        {{"America/New_York", 2026, 3, 9, 0, 59, 59, 0, 2026, 3, 8}, false},
        {{"America/New_York", 2026, 3, 9, 1, 0, 0, 0, 2026, 3, 8}, true},
        // ... and after a 25-hour day it is over an hour before midnight.
        {{"America/New_York", 2026, 11, 1, 23, 0, 0, 0, 2026, 11, 1}, true},
        {{"America/New_York", 2026, 11, 1, 22, 59, 59, 0, 2026, 11, 1}, false},
    };
    for (const auto& [c, expected] : cases) {
        SCOPED_TRACE(c.describe());
        Calendar calendar(zoneEnvironment(c.zone));
        const Date now = wall(calendar, c.y, c.m, c.d, c.h, c.mi, c.s, c.fraction);
        eventInfo e = stored("e", dailyEvent(2026, 1, 1, 9, 0));
        e.eventHaveEndDateOrNot = true;
        e.eventEndDateYear = c.dayY;
        e.eventEndDateMonth = c.dayM;
        e.eventEndDateDay = c.dayD;
        EXPECT_EQ(eventIsOver(e, now, calendar), expected);
        // Without the flag the end numbers mean nothing.
        e.eventHaveEndDateOrNot = false;
        EXPECT_FALSE(eventIsOver(e, now, calendar));
    }
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    eventInfo noEndDate = stored("e", dailyEvent(2026, 1, 1, 9, 0));
    noEndDate.eventHaveEndDateOrNot = true;
    noEndDate.eventEndDateYear = kYearWithoutDate;
    EXPECT_FALSE(eventIsOver(noEndDate, wall(berlin, 2026, 3, 10), berlin));
}

class WeekRule : public ::testing::Test {
protected:
    void SetUp() override { setTranslator({}); }
    void TearDown() override { setTranslator({}); }
};

TEST_F(WeekRule, TheFirstCodeFromTodayOnNamesTheDay) {
    // Weekdays run 1 Sunday ... 7 Saturday, week codes 1 Monday ... 7 Sunday; the week runs
    // Monday to Sunday whatever the calendar says.
    const std::vector<std::int64_t> lists[] = {{1}, {7}, {3, 5}, {6, 2}};
    const char* expected[7][4] = {
        {"tomorrow", "today", "nextWeek3", "nextWeek2"},     // Sunday
        {"today", "thisWeek7", "thisWeek3", "tomorrow"},     // Monday
        {"nextWeek1", "thisWeek7", "tomorrow", "today"},     // Tuesday
        {"nextWeek1", "thisWeek7", "today", "thisWeek6"},    // Wednesday
        {"nextWeek1", "thisWeek7", "tomorrow", "thisWeek6"}, // Thursday
        {"nextWeek1", "thisWeek7", "today", "tomorrow"},     // Friday
        {"nextWeek1", "tomorrow", "nextWeek3", "today"},     // Saturday
    };
    for (int weekday = 1; weekday <= 7; ++weekday) {
        for (std::size_t i = 0; i < std::size(lists); ++i) {
            EXPECT_EQ(weekRuleDateString(weekday, lists[i]), expected[weekday - 1][i] + kSuffix)
                << "weekday " << weekday << " list " << i;
        }
        EXPECT_EQ(weekRuleDateString(weekday, {}), "");
    }
    EXPECT_EQ(weekRuleDateString(4, {7, 7, 1}), "thisWeek7" + kSuffix);
}

TEST_F(WeekRule, CodesAndWeekdaysOutsideTheWeekFindNothing) {
    for (std::int64_t weekday : {0, 8}) {
        EXPECT_EQ(weekRuleDateString(weekday, {1, 2, 3, 4, 5, 6, 7}), "") << weekday;
    }
    EXPECT_EQ(weekRuleDateString(2, {0, 8, -7, 14}), "");
    EXPECT_EQ(weekRuleDateString(2, {0, 8, 5}), "thisWeek5" + kSuffix);
}

TEST_F(WeekRule, ThePhraseIsLocalised) {
    setTranslator([](std::string_view key) { return "<" + std::string(key) + ">"; });
    EXPECT_EQ(weekRuleDateString(3, {2}), "<today" + kSuffix + ">");
}

TEST(Localizable, EveryWeekPhraseHasBothTexts) {
    // The tests run inside the build folder, which lies somewhere below the source tree.
    auto root = std::filesystem::current_path();
    while (!std::filesystem::exists(root / "i18n") && root.has_relative_path()) {
        root = root.parent_path();
    }
    const auto path = root / "i18n" / "Localizable.json";
    std::ifstream in(path);
    ASSERT_TRUE(in) << path;
    const auto table = nlohmann::json::parse(in);
    for (const char* word :
         {"today", "tomorrow", "thisWeek3", "thisWeek4", "thisWeek5", "thisWeek6", "thisWeek7",
          "nextWeek1", "nextWeek2", "nextWeek3", "nextWeek4", "nextWeek5", "nextWeek6"}) {
        const std::string key = word + kSuffix;
        ASSERT_TRUE(table.contains(key) && table[key].size() == 2u) << key;
        EXPECT_FALSE(table[key][0].get<std::string>().empty()) << key;
        EXPECT_FALSE(table[key][1].get<std::string>().empty()) << key;
    }
}

TEST(NextDateString, WeeklyPhraseMonthlyPlaceholderOtherwiseError) {
    setTranslator({});
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    const Date tuesday = wall(berlin, 2026, 3, 10, 10);
    EXPECT_EQ(nextDateString(weekly("w", {3}), tuesday, berlin), "tomorrow" + kSuffix);
    EXPECT_EQ(nextDateString(weekly("w", {}), tuesday, berlin), "");

    eventInfo notRepeatingWeekly = weekly("w", {3});
    notRepeatingWeekly.eventRepeatOrNot = false;
    EXPECT_EQ(nextDateString(notRepeatingWeekly, tuesday, berlin), "error");

    eventInfo monthly = repeating("m", 3, 2026, 1, 5);
    monthly.eventDateWhenEveryMonth = encodeDayListArchive({10, 99});
    EXPECT_EQ(nextDateString(monthly, tuesday, berlin), ">><<");
    monthly.eventRepeatOrNot = false;
    EXPECT_EQ(nextDateString(monthly, tuesday, berlin), ">><<");

    for (std::int64_t type : {0, 1, 4, 5}) {
        EXPECT_EQ(nextDateString(repeating("x", type, 2026, 1, 5), tuesday, berlin), "error")
            << "type " << type;
    }
    EXPECT_EQ(monthRuleDateString(10, {10}), ">><<");
    EXPECT_EQ(monthRuleDateString(0, {}), ">><<");
    // The weekday is today's in the calendar's zone: Tuesday 23:30 in Berlin is Wednesday 06:30
    // in Shanghai.
    const Date lateTuesday = wall(berlin, 2026, 3, 10, 23, 30);
    EXPECT_EQ(nextDateString(weekly("w", {3}), lateTuesday, berlin), "tomorrow" + kSuffix);
    EXPECT_EQ(
        nextDateString(weekly("w", {3}), lateTuesday, Calendar(zoneEnvironment("Asia/Shanghai"))),
        "today" + kSuffix);
}

TEST(NextDateStringDeathTest, UndecodableListsStop) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    const Date now = wall(berlin, 2026, 3, 10, 10);
    eventInfo monthly = repeating("m", 3, 2026, 1, 5);
    monthly.eventDateWhenEveryMonth = Bytes{0xde, 0xad, 0xbe, 0xef, 0x00, 0x01};
    EXPECT_DEATH(nextDateString(monthly, now, berlin), "Can't encode data: ");
    eventInfo weeklyEvent = weekly("w", {});
    weeklyEvent.eventDateWhenEveryWeek = Bytes{'n', 'o', 't', ' ', 'a', 'n', ' ', 'a', 'r', 'c'};
    EXPECT_DEATH(nextDateString(weeklyEvent, now, berlin), "Can't encode data: ");
    EXPECT_DEATH(decodeDayList(Bytes{1, 2, 3, 4, 5, 6, 7, 8}), "Can't encode data: ");
}

TEST(TodayString, ModesInTheCalendarsZone) {
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    Calendar shanghai(zoneEnvironment("Asia/Shanghai"));
    const Date moment = wall(berlin, 2026, 3, 10, 20, 5, 9);
    EXPECT_EQ(todayString(1, moment, berlin), "2026-03-10");
    EXPECT_EQ(todayString(2, moment, berlin), "20:05:09");
    EXPECT_EQ(todayString(1, moment, shanghai), "2026-03-11");
    EXPECT_EQ(todayString(2, moment, shanghai), "03:05:09");
    EXPECT_EQ(todayString(0, moment, berlin), "");
    EXPECT_EQ(todayString(3, moment, berlin), "");
}

// At 08:00 on 10 March 2026 in Berlin: a daily 09:00 event started in the past has today 09:00 as
// its first element; a yearly event of 10 March has today 00:00 (still open) as its first.
TEST(NearestEventId, SmallestFirstIntervalTiesInStoreOrder) {
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    const Date now = wall(berlin, 2026, 3, 10, 8);
    const eventInfo dailyNine = stored("daily", dailyEvent(2026, 3, 1, 9, 0));
    const eventInfo yearlyToday = repeating("yearly", 4, 2000, 3, 10);
    const eventInfo yearlyTomorrow = repeating("tomorrow", 4, 2000, 3, 11);
    const eventInfo oneOffToday = oneOff("oneOff", 2020, 3, 10);
    const eventInfo unknownType = repeating("type5", 5, 2026, 3, 10);

    EXPECT_EQ(nearestEventId({}, now, berlin), "");
    EXPECT_EQ(nearestEventId({unknownType}, now, berlin), "");
    EXPECT_EQ(nearestEventId({dailyNine, yearlyTomorrow}, now, berlin), "daily");
    // Today's yearly element lies 8 hours back and beats the daily one an hour ahead.
    EXPECT_EQ(nearestEventId({dailyNine, yearlyToday, unknownType}, now, berlin), "yearly");
    // Equal intervals: the first in the order given.
    EXPECT_EQ(nearestEventId({yearlyToday, oneOffToday}, now, berlin), "yearly");
    EXPECT_EQ(nearestEventId({oneOffToday, yearlyToday}, now, berlin), "oneOff");
    // A series that has ended has no list and takes no part.
    eventInfo ended = yearlyToday;
    ended.eventId = "ended";
    ended.eventHaveEndDateOrNot = true;
    ended.eventEndDateYear = 2025;
    ended.eventEndDateMonth = 12;
    ended.eventEndDateDay = 31;
    EXPECT_EQ(nearestEventId({ended, dailyNine}, now, berlin), "daily");
}

TEST(EventsOnDateComponents, TheTargetLiesInTheDayAfterAnOccurrence) {
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    const Date now = wall(berlin, 2026, 3, 10, 8);
    const std::vector<eventInfo> events = {
        stored("daily", dailyEvent(2026, 3, 1, 9, 0)),
        repeating("yearly", 4, 2000, 3, 10),
        repeating("type5", 5, 2026, 3, 10),
    };
    struct Case {
        DateComponents target;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        // Midnight of 10 March is before the daily element of 09:00.
        {dateParts(2026, 3, 10), {"yearly"}},
        {dateParts(2026, 3, 10, 9, 0), {"daily", "yearly"}},
        // 24 hours after an occurrence is outside it, and inside the next daily one.
        {dateParts(2026, 3, 11), {"daily"}},
        {dateParts(2026, 3, 9, 12, 0), {}},
        // Lenient target: 38 February is 10 March.
        {dateParts(2026, 2, 38), {"yearly"}},
        {dateParts(2027, 3, 10, 0, 30), {"yearly"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(idsOf(eventsOnDateComponents(events, c.target, now, berlin)), c.expected)
            << *c.target.month << "/" << *c.target.day << " " << c.target.hour.value_or(0) << ":"
            << c.target.minute.value_or(0);
    }
}

TEST(EventsOnDateComponentsDeathTest, ATargetWithoutADateStopsOnceThereIsAnOccurrence) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Calendar berlin(zoneEnvironment("Europe/Berlin"));
    const Date now = wall(berlin, 2026, 3, 10, 8);
    const DateComponents nowhere = dateParts(kYearWithoutDate, 1, 1);
    EXPECT_TRUE(
        eventsOnDateComponents({repeating("type5", 5, 2026, 3, 10)}, nowhere, now, berlin).empty());
    EXPECT_DEATH(
        eventsOnDateComponents({repeating("yearly", 4, 2000, 3, 10)}, nowhere, now, berlin),
        "Unexpectedly found nil while unwrapping an Optional value");
}

class ComputeFuncStore : public ::testing::Test {
protected:
    void SetUp() override { setTranslator({}); }

    IsolatedStorage storage;
    ScopedCalendarEnvironment env{fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 10)};
};

TEST_F(ComputeFuncStore, CountsAndPhrasesOfStoredEvents) {
    eventInfo weeklyEvent = weekly("weekly", {5, 3});
    storeAll({oneOff("soon", 2026, 3, 20), weeklyEvent, repeating("daily", 1, 2026, 1, 1)});
    computeFunc f;
    EXPECT_EQ(f.dayCountString("soon"), "10");
    EXPECT_EQ(f.dayCountString("daily"), "error");
    EXPECT_EQ(f.dayCountString("weekly"), "");
    // The setting beside it does not change the count.
    f.showDaysIncludeTheStartDayOrNot = true;
    EXPECT_EQ(computeFunc().dayCountString("soon"), "10");
    EXPECT_EQ(f.nextDateString("weekly"), "tomorrow" + kSuffix);
    EXPECT_EQ(f.nextDateString("soon"), "error");
    // An unknown id reads as a blank event: no repeat rule, type 0.
    EXPECT_EQ(f.nextDateString("nobody"), "error");
    EXPECT_EQ(f.dayCountString("nobody"), dayCountString(eventInfo{}, now(), Calendar::current()));
    EXPECT_EQ(f.todayString(1), "2026-03-10");
    EXPECT_EQ(f.todayString(2), "10:00:00");
    eventInfo ended = stored("e", withEnd(dailyEvent(2026, 3, 1, 9, 0), 2026, 3, 9));
    EXPECT_TRUE(f.eventIsOver(ended));
}

TEST_F(ComputeFuncStore, NearestAndOnDateComponentsReadTheStore) {
    ScopedCalendarEnvironment morning(fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8));
    EXPECT_EQ(computeFunc().nearestEventId(), "");
    storeAll({repeating("b", 4, 2001, 3, 10), stored("daily", dailyEvent(2026, 3, 1, 9, 0)),
              repeating("a", 4, 2000, 3, 10)});
    computeFunc f;
    EXPECT_EQ(f.nearestEventId(), "b");
    EXPECT_EQ(idsOf(f.eventsOnDateComponents(dateParts(2026, 3, 10, 12))),
              (std::vector<std::string>{"b", "daily", "a"}));
}

TEST_F(ComputeFuncStore, CountsAndLookupsGiveBlanksForUnknownIds) {
    eventInfo full = oneOff("e1", 2026, 3, 20);
    full.eventTitle = "Title";
    full.eventDateWhenEveryWeek = encodeDayListArchive({1, 7});
    full.eventStarOrNot = true;
    full.backupDataType03 = "b3";
    computeFunc f;
    EXPECT_EQ(f.eventCountString(), "0");
    EXPECT_EQ(f.starredEventCountString(), "0");
    storeAll({full, oneOff("plain", 2026, 1, 1)});
    EXPECT_EQ(f.eventCountString(), "2");
    EXPECT_EQ(f.starredEventCountString(), "1");
    storeAll({sampleMemo("m1", "title " + std::string("m1"), "e1", "2026-03-10 / 09:00")});

    EXPECT_EQ(f.eventForId("e1"), full);
    EXPECT_EQ(static_cast<const EventFields&>(f.eventObjectForId("e1")),
              static_cast<const EventFields&>(full));
    EXPECT_EQ(f.eventForId("nobody"), eventInfo{});
    EXPECT_EQ(f.eventForId(""), eventInfo{});
    EXPECT_EQ(static_cast<const EventFields&>(f.eventObjectForId("nobody")), EventFields{});
    EXPECT_EQ(f.memoForId("m1").title, "title m1");
    EXPECT_EQ(f.memoForId("nobody"), memoDataForNotiObject{});

    EXPECT_TRUE(f.eventExists("e1"));
    EXPECT_FALSE(f.eventExists("nobody"));
    EXPECT_TRUE(f.memoExists("m1"));
    EXPECT_FALSE(f.memoExists("e1"));
    auto store = Store::open();
    store.write([&] {
        store.remove<eventInfo>("e1");
        store.remove<memoDataForNotiObject>("m1");
    });
    EXPECT_FALSE(f.eventExists("e1"));
    EXPECT_FALSE(f.memoExists("m1"));
    EXPECT_EQ(f.eventForId("e1"), eventInfo{});
}

TEST_F(ComputeFuncStore, MemoOrderFollowsTheReversedSettingWithFreshItemIds) {
    storeAll({sampleMemo("late", "title " + std::string("late"), "e1", "2026-03-10 / 09:00")});
    storeAll({sampleMemo("early", "title " + std::string("early"), "e1", "2026-03-09 / 10:00")});
    storeAll({sampleMemo("other", "title " + std::string("other"), "e2", "2026-03-08 / 10:00")});
    storeAll(
        {sampleMemo("lateToo", "title " + std::string("lateToo"), "e1", "2026-03-10 / 09:00")});
    storeAll({sampleMemo("middle", "title " + std::string("middle"), "e1", "2026-03-09 / 18:30")});
    computeFunc f;
    EXPECT_TRUE(f.memoItemsForEvent("nobody").empty());
    // Unset: oldest first; equal stamps keep store order.
    const auto first = f.memoItemsForEvent("e1");
    EXPECT_EQ(idsOf(first), (std::vector<std::string>{"early", "middle", "late", "lateToo"}));
    // Set: newest first, equal stamps still in store order.
    f.ascendingForList = true;
    const auto second = computeFunc().memoItemsForEvent("e1");
    EXPECT_EQ(idsOf(second), (std::vector<std::string>{"late", "lateToo", "middle", "early"}));
    EXPECT_EQ(idsOf(f.memoItemsForEvent("e2")), (std::vector<std::string>{"other"}));
    // Every call makes new item ids.
    std::set<std::string> ids;
    for (const auto& items : {first, second}) {
        for (const auto& item : items) {
            EXPECT_EQ(item.id.size(), 36u) << item.id;
            ids.insert(item.id);
        }
    }
    EXPECT_EQ(ids.size(), 8u);
}

} // namespace
