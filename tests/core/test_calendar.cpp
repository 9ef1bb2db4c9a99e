// Lenient composition, week numbering, clock changes and decomposition of the ICU calendar layer.
// Expected moments are computed here from the proleptic Gregorian calendar and known UTC offsets,
// independently of ICU.
#include "TestSupport.h"
#include "base/Fatal.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <unicode/calendar.h>
#include <unicode/timezone.h>
#include <vector>

using namespace tidemark;

namespace {

// Days from 1970-01-01 to a proleptic Gregorian date (month 1...12).
std::int64_t daysFromCivil(std::int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

double utc(std::int64_t y, unsigned m, unsigned d, int h = 0, int mi = 0, int s = 0) {
    return static_cast<double>(daysFromCivil(y, m, d) * 86400 + h * 3600 + mi * 60 + s);
}

// 1 Sunday ... 7 Saturday; 1970-01-01 was a Thursday.
std::int64_t weekdayOf(std::int64_t y, unsigned m, unsigned d) {
    return ((daysFromCivil(y, m, d) % 7 + 7) % 7 + 4) % 7 + 1;
}

CalendarEnvironment environment(const std::string& zone, const std::string& locale = "en_US",
                                std::optional<int> firstWeekday = std::nullopt,
                                std::optional<int> minimumDays = std::nullopt) {
    CalendarEnvironment env;
    env.timeZoneId = zone;
    env.localeId = locale;
    env.firstWeekday = firstWeekday;
    env.minimumDaysInFirstWeek = minimumDays;
    return env;
}

DateComponents ymd(std::int64_t y, std::int64_t m, std::int64_t d) {
    DateComponents c;
    c.year = y;
    c.month = m;
    c.day = d;
    return c;
}

DateComponents ymdhms(std::int64_t y, std::int64_t m, std::int64_t d, std::int64_t h,
                      std::int64_t mi, std::int64_t s = 0) {
    auto c = ymd(y, m, d);
    c.hour = h;
    c.minute = mi;
    c.second = s;
    return c;
}

DateComponents yearWeekWeekday(std::int64_t year, std::int64_t week, std::int64_t weekday) {
    DateComponents c;
    c.year = year;
    c.weekOfYear = week;
    c.weekday = weekday;
    return c;
}

struct Ymd {
    std::int64_t year, month, day;
};

Ymd localDay(const Calendar& calendar, Date date) {
    const auto c = calendar.dateComponents(kYear | kMonth | kDay, date);
    return {c.year.value_or(-1), c.month.value_or(-1), c.day.value_or(-1)};
}

} // namespace

// --- lenient composition -----------------------------------------------------------------------

TEST(CalendarComposition, OverflowingAndZeroFieldsCarryLikeThePlatform) {
    struct Case {
        std::int64_t year, month, day;
        Ymd expected;
    };
    const std::vector<Case> cases = {
        {2026, 2, 30, {2026, 3, 2}},
        {2025, 2, 29, {2025, 3, 1}},
        {2024, 2, 29, {2024, 2, 29}},
        {2026, 3, 0, {2026, 2, 28}},
        {2024, 3, 0, {2024, 2, 29}},
        {2026, 1, 0, {2025, 12, 31}},
        {2026, 14, 1, {2027, 2, 1}},
        {2026, 1, 35, {2026, 2, 4}},
        {2026, 12, 32, {2027, 1, 1}},
        {2026, 0, 15, {2025, 12, 15}},
        {2026, -1, 15, {2025, 11, 15}},
        {2026, 3, -1, {2026, 2, 27}},
        {2026, 1, 2000, {2031, 6, 23}},
        {2026, 25, 1, {2028, 1, 1}},
        // The last day of a month as "day 0 of the month after", month past December included.
        {2024, 3, 0, {2024, 2, 29}},
        {2023, 3, 0, {2023, 2, 28}},
        {2024, 13, 0, {2024, 12, 31}},
        {2027, 15, 0, {2028, 2, 29}},
    };
    for (const char* zone : {"Etc/UTC", "Europe/Berlin", "Pacific/Auckland", "America/New_York"}) {
        Calendar calendar(environment(zone));
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(zone) + " " + std::to_string(c.year) + "-" +
                         std::to_string(c.month) + "-" + std::to_string(c.day));
            const auto date = calendar.date(ymd(c.year, c.month, c.day));
            ASSERT_TRUE(date.has_value());
            const auto parts =
                calendar.dateComponents(kYear | kMonth | kDay | kHour | kMinute | kSecond, *date);
            EXPECT_EQ(parts.year, c.expected.year);
            EXPECT_EQ(parts.month, c.expected.month);
            EXPECT_EQ(parts.day, c.expected.day);
            // Absent hour, minute and second are local midnight.
            EXPECT_EQ(parts.hour, 0);
            EXPECT_EQ(parts.minute, 0);
            EXPECT_EQ(parts.second, 0);
        }
    }
}

TEST(CalendarComposition, ComposesTheExactUtcMomentOfALocalWallTime) {
    struct Case {
        const char* zone;
        DateComponents local;
        double expectedUtc;
    };
    const std::vector<Case> cases = {
        {"Etc/UTC", ymdhms(2026, 3, 10, 9, 5, 7), utc(2026, 3, 10, 9, 5, 7)},
        {"Asia/Shanghai", ymdhms(2026, 3, 10, 9, 5, 7), utc(2026, 3, 10, 1, 5, 7)},
        {"Europe/Berlin", ymdhms(2026, 1, 15, 12, 0), utc(2026, 1, 15, 11, 0)},
        {"Europe/Berlin", ymdhms(2026, 7, 15, 12, 0), utc(2026, 7, 15, 10, 0)},
        {"America/New_York", ymdhms(2026, 7, 4, 20, 0), utc(2026, 7, 5, 0, 0)},
        {"Pacific/Auckland", ymdhms(2026, 1, 15, 12, 0), utc(2026, 1, 14, 23, 0)},
        {"Pacific/Auckland", ymdhms(2026, 7, 15, 12, 0), utc(2026, 7, 15, 0, 0)},
        // Hours, minutes and seconds carry too.
        {"Etc/UTC", ymdhms(2026, 12, 31, 24, 0), utc(2027, 1, 1)},
        {"Etc/UTC", ymdhms(2026, 3, 10, 0, 90, 61), utc(2026, 3, 10, 1, 31, 1)},
        {"Etc/UTC", ymdhms(2026, 3, 10, -1, 0), utc(2026, 3, 9, 23, 0)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.zone);
        Calendar calendar(environment(c.zone));
        const auto date = calendar.date(c.local);
        ASSERT_TRUE(date.has_value());
        EXPECT_EQ(date->secondsSince1970, c.expectedUtc);
    }
}

TEST(CalendarComposition, MonthWithWeekdayOrdinalOrWeekOfMonth) {
    Calendar calendar(environment("Europe/Berlin"));
    DateComponents second;
    second.year = 2026;
    second.month = 3;
    second.weekday = 3; // Tuesday
    second.weekdayOrdinal = 2;
    auto date = calendar.date(second);
    ASSERT_TRUE(date);
    EXPECT_EQ(date->secondsSince1970, utc(2026, 3, 9, 23, 0));

    DateComponents inWeek;
    inWeek.year = 2026;
    inWeek.month = 3;
    inWeek.weekOfMonth = 3;
    inWeek.weekday = 1; // Sunday of the third week (US weeks run Sunday to Saturday)
    date = calendar.date(inWeek);
    ASSERT_TRUE(date);
    EXPECT_EQ(date->secondsSince1970, utc(2026, 3, 14, 23, 0));
}

// --- week of year ------------------------------------------------------------------------------

TEST(CalendarComposition, YearIsTheWeekNumberingYearAndLateWeeksRunOn) {
    struct Case {
        const char* locale;
        std::optional<int> firstWeekday, minimumDays;
        std::int64_t year, week, weekday;
        Ymd expected;
    };
    const std::vector<Case> cases = {
        // US weeks: Sunday first, the week of 1 January is week 1.
        {"en_US", {}, {}, 2024, 1, 1, {2023, 12, 31}},
        {"en_US", {}, {}, 2024, 1, 7, {2024, 1, 6}},
        {"en_US", {}, {}, 2025, 1, 1, {2024, 12, 29}},
        {"en_US", {}, {}, 2026, 1, 5, {2026, 1, 1}},
        {"en_US", {}, {}, 2024, 52, 7, {2024, 12, 28}},
        {"en_US", {}, {}, 2024, 53, 1, {2024, 12, 29}},
        {"en_US", {}, {}, 2023, 7, 2, {2023, 2, 13}},
        // German (ISO) weeks: Monday first, at least four days in week 1.
        {"de_DE", {}, {}, 2027, 53, 5, {2028, 1, 6}},
        {"de_DE", {}, {}, 2027, 1, 2, {2027, 1, 4}},
        {"de_DE", {}, {}, 2026, 1, 2, {2025, 12, 29}},
        {"de_DE", {}, {}, 2021, 1, 2, {2021, 1, 4}},
        {"de_DE", {}, {}, 2020, 53, 6, {2021, 1, 1}},
        {"de_DE", {}, {}, 2025, 1, 1, {2025, 1, 5}}, // Sunday ends the week
        {"de_DE", {}, {}, 2024, 54, 2, {2025, 1, 6}},
        // The same rules forced onto an American locale, and the reverse.
        {"en_US", 2, 4, 2027, 53, 5, {2028, 1, 6}},
        {"de_DE", 1, 1, 2024, 1, 1, {2023, 12, 31}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.year) + " week " +
                     std::to_string(c.week) + " weekday " + std::to_string(c.weekday));
        Calendar calendar(environment("Europe/Berlin", c.locale, c.firstWeekday, c.minimumDays));
        const auto date = calendar.date(yearWeekWeekday(c.year, c.week, c.weekday));
        ASSERT_TRUE(date.has_value());
        const auto day = localDay(calendar, *date);
        EXPECT_EQ(day.year, c.expected.year);
        EXPECT_EQ(day.month, c.expected.month);
        EXPECT_EQ(day.day, c.expected.day);
        EXPECT_EQ(calendar.dateComponents(kWeekday, *date).weekday, c.weekday);
        EXPECT_EQ(calendar.dateComponents(kHour, *date).hour, 0);
    }
}

TEST(CalendarComposition, YearForWeekOfYearTakesPrecedenceOverYear) {
    Calendar calendar(environment("Etc/UTC", "de_DE"));
    DateComponents c = yearWeekWeekday(1999, 1, 2);
    c.yearForWeekOfYear = 2026;
    const auto date = calendar.date(c);
    ASSERT_TRUE(date);
    EXPECT_EQ(date->secondsSince1970, utc(2025, 12, 29));
}

// What ICU does without the calendar layer's settings: these are the reasons for them. If ICU
// ever changes here, the layer's settings need looking at again.
TEST(CalendarComposition, IcuDefaultsDifferFromThePlatformRules) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> plain(icu::Calendar::createInstance(
        icu::TimeZone::createTimeZone("Europe/Berlin"), icu::Locale("en_US"), status));
    ASSERT_TRUE(U_SUCCESS(status));

    plain->clear();
    plain->set(UCAL_YEAR, 2024);
    plain->set(UCAL_WEEK_OF_YEAR, 1);
    plain->set(UCAL_DAY_OF_WEEK, UCAL_SUNDAY);
    const double plainYear = plain->getTime(status) / 1000;
    EXPECT_EQ(plainYear, utc(2024, 12, 28, 23, 0)); // 29 December 2024, Berlin midnight
    plain->clear();
    plain->set(UCAL_YEAR_WOY, 2024);
    plain->set(UCAL_WEEK_OF_YEAR, 1);
    plain->set(UCAL_DAY_OF_WEEK, UCAL_SUNDAY);
    const double weekYear = plain->getTime(status) / 1000;
    EXPECT_EQ(weekYear, utc(2023, 12, 30, 23, 0)); // 31 December 2023
    EXPECT_EQ(Calendar(environment("Europe/Berlin")).date(yearWeekWeekday(2024, 1, 1)),
              Date{weekYear});

    plain->clear();
    plain->set(2026, UCAL_OCTOBER, 25, 2, 30, 0);
    const double defaultRepeated = plain->getTime(status) / 1000;
    EXPECT_EQ(defaultRepeated, utc(2026, 10, 25, 1, 30)); // the later 02:30 (CET)
    EXPECT_TRUE(U_SUCCESS(status));
}

// --- clock changes -----------------------------------------------------------------------------

TEST(CalendarComposition, RepeatedWallTimeIsTheEarlierAndSkippedMovesForward) {
    struct Case {
        const char* zone;
        DateComponents local;
        double expectedUtc;
        std::int64_t hourAfter, minuteAfter;
    };
    const std::vector<Case> cases = {
        // Clocks go back: 02:00-03:00 happens twice in Berlin, 01:00-02:00 in New York.
        {"Europe/Berlin", ymdhms(2026, 10, 25, 2, 30), utc(2026, 10, 25, 0, 30), 2, 30},
        {"Europe/Berlin", ymdhms(2026, 10, 25, 2, 0), utc(2026, 10, 25, 0, 0), 2, 0},
        {"Europe/Berlin", ymdhms(2026, 10, 25, 3, 0), utc(2026, 10, 25, 2, 0), 3, 0},
        {"America/New_York", ymdhms(2026, 11, 1, 1, 30), utc(2026, 11, 1, 5, 30), 1, 30},
        {"Pacific/Auckland", ymdhms(2026, 4, 5, 2, 30), utc(2026, 4, 4, 13, 30), 2, 30},
        // Clocks go forward: the missing wall time is read with the offset before the gap.
        {"Europe/Berlin", ymdhms(2026, 3, 29, 2, 30), utc(2026, 3, 29, 1, 30), 3, 30},
        {"Europe/Berlin", ymdhms(2026, 3, 29, 2, 0), utc(2026, 3, 29, 1, 0), 3, 0},
        {"America/New_York", ymdhms(2026, 3, 8, 2, 30), utc(2026, 3, 8, 7, 30), 3, 30},
        {"Pacific/Auckland", ymdhms(2026, 9, 27, 2, 30), utc(2026, 9, 26, 14, 30), 3, 30},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.zone) + " " + std::to_string(*c.local.month) + "-" +
                     std::to_string(*c.local.day) + " " + std::to_string(*c.local.hour) + ":" +
                     std::to_string(*c.local.minute));
        Calendar calendar(environment(c.zone));
        const auto date = calendar.date(c.local);
        ASSERT_TRUE(date.has_value());
        EXPECT_EQ(date->secondsSince1970, c.expectedUtc);
        const auto parts = calendar.dateComponents(kHour | kMinute, *date);
        EXPECT_EQ(parts.hour, c.hourAfter);
        EXPECT_EQ(parts.minute, c.minuteAfter);
    }
}

TEST(CalendarComposition, DailyWallTimeAcrossTheAutumnChangeInBerlin) {
    Calendar calendar(environment("Europe/Berlin", "de_DE"));
    std::vector<double> moments;
    for (int day = 24; day <= 26; ++day) {
        moments.push_back(unwrap(calendar.date(ymdhms(2026, 10, day, 2, 30))).secondsSince1970);
    }
    EXPECT_EQ(moments[1] - moments[0], 24 * 3600.0); // 25 October resolves to 02:30 CEST
    EXPECT_EQ(moments[2] - moments[1], 25 * 3600.0);
    // Seen at the first 02:00 of that day, the day's 02:30 is half an hour ahead, not 90 minutes.
    const Date firstTwoOClock{utc(2026, 10, 25, 0, 0)};
    EXPECT_EQ(Date{moments[1]}.timeIntervalSince(firstTwoOClock), 1800.0);
}

// --- decomposition -----------------------------------------------------------------------------

TEST(CalendarDecomposition, RoundTripsWallTimesInSeveralZones) {
    const std::vector<DateComponents> walls = {
        ymdhms(2026, 1, 1, 0, 0, 0),      ymdhms(2026, 3, 10, 9, 5, 7),
        ymdhms(2024, 2, 29, 23, 59, 59),  ymdhms(2026, 3, 29, 1, 59, 59),
        ymdhms(2026, 3, 29, 3, 0, 0),     ymdhms(2026, 10, 25, 1, 59, 59),
        ymdhms(2026, 10, 25, 3, 0, 0),    ymdhms(2026, 11, 1, 0, 59, 59),
        ymdhms(2026, 12, 31, 23, 59, 59), ymdhms(1969, 12, 31, 23, 0, 0),
        ymdhms(1900, 6, 15, 12, 0, 0),    ymdhms(2100, 2, 28, 6, 45, 0),
    };
    const ComponentSet wallSet = kYear | kMonth | kDay | kHour | kMinute | kSecond;
    for (const char* zone :
         {"Europe/Berlin", "America/New_York", "Asia/Shanghai", "Pacific/Auckland"}) {
        Calendar calendar(environment(zone));
        for (const auto& wall : walls) {
            SCOPED_TRACE(std::string(zone) + " " + std::to_string(*wall.year) + "-" +
                         std::to_string(*wall.month) + "-" + std::to_string(*wall.day));
            const auto date = calendar.date(wall);
            ASSERT_TRUE(date.has_value());
            auto parts = calendar.dateComponents(wallSet | kWeekday, *date);
            EXPECT_EQ(parts.weekday, weekdayOf(*wall.year, static_cast<unsigned>(*wall.month),
                                               static_cast<unsigned>(*wall.day)));
            parts.weekday.reset();
            EXPECT_EQ(parts, wall);
        }
    }
}

TEST(CalendarDecomposition, MomentsRoundTripThroughTheirWallTime) {
    // Every moment over two years, stepped by an uneven interval, decomposes to a wall time that
    // composes back to the same moment, except in a repeated hour, where the earlier one wins.
    const ComponentSet wallSet = kYear | kMonth | kDay | kHour | kMinute | kSecond;
    for (const char* zone :
         {"Europe/Berlin", "America/New_York", "Asia/Shanghai", "Pacific/Auckland"}) {
        SCOPED_TRACE(zone);
        Calendar calendar(environment(zone));
        int repeated = 0;
        for (double t = utc(2025, 1, 1); t < utc(2027, 1, 1); t += 17 * 60 + 13) {
            const auto parts = calendar.dateComponents(wallSet, Date{t});
            const auto back = calendar.date(parts);
            ASSERT_TRUE(back.has_value());
            if (back->secondsSince1970 != t) {
                ASSERT_EQ(t - back->secondsSince1970, 3600.0) << std::to_string(t);
                ++repeated;
            }
        }
        if (std::string(zone) == "Asia/Shanghai") {
            EXPECT_EQ(repeated, 0);
        } else {
            EXPECT_GT(repeated, 0); // the walk steps into the second pass of a repeated hour
        }
    }
}

TEST(CalendarDecomposition, WeekFieldsFollowTheLocaleRules) {
    struct Case {
        const char* locale;
        Ymd day;
        std::int64_t weekOfYear, yearForWeekOfYear, weekOfMonth, weekdayOrdinal, weekday;
    };
    const std::vector<Case> cases = {
        {"de_DE", {2024, 12, 30}, 1, 2025, 5, 5, 2}, {"en_US", {2024, 12, 30}, 1, 2025, 5, 5, 2},
        {"de_DE", {2021, 1, 1}, 53, 2020, 0, 1, 6},  {"en_US", {2021, 1, 1}, 1, 2021, 1, 1, 6},
        {"de_DE", {2026, 3, 1}, 9, 2026, 0, 1, 1},   {"en_US", {2026, 3, 1}, 10, 2026, 1, 1, 1},
        {"en_US", {2026, 3, 10}, 11, 2026, 2, 2, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.day.year) + "-" +
                     std::to_string(c.day.month) + "-" + std::to_string(c.day.day));
        Calendar calendar(environment("Asia/Shanghai", c.locale));
        const auto date = unwrap(calendar.date(ymdhms(c.day.year, c.day.month, c.day.day, 13, 0)));
        const auto parts = calendar.dateComponents(kWeekOfYear | kYearForWeekOfYear | kWeekOfMonth |
                                                       kWeekdayOrdinal | kWeekday | kEra,
                                                   date);
        EXPECT_EQ(parts.weekOfYear, c.weekOfYear);
        EXPECT_EQ(parts.yearForWeekOfYear, c.yearForWeekOfYear);
        EXPECT_EQ(parts.weekOfMonth, c.weekOfMonth);
        EXPECT_EQ(parts.weekdayOrdinal, c.weekdayOrdinal);
        EXPECT_EQ(parts.weekday, c.weekday);
        EXPECT_EQ(parts.era, 1); // AD
        // Only what was asked for.
        EXPECT_FALSE(parts.year || parts.month || parts.day || parts.hour || parts.minute ||
                     parts.second);
        // A date's own year, week and weekday compose back to it.
        DateComponents back;
        back.yearForWeekOfYear = parts.yearForWeekOfYear;
        back.weekOfYear = parts.weekOfYear;
        back.weekday = parts.weekday;
        back.hour = 13;
        EXPECT_EQ(calendar.date(back), date);
    }
}

TEST(CalendarDecomposition, EngineSetHasExactlyItsComponents) {
    Calendar calendar(environment("Europe/Berlin", "de_DE"));
    const auto parts = calendar.dateComponents(
        kEngineComponents, unwrap(calendar.date(ymdhms(2026, 3, 10, 8, 15, 42))));
    DateComponents expected = ymd(2026, 3, 10);
    expected.hour = 8;
    expected.minute = 15;
    expected.weekday = 3;
    expected.weekOfMonth = 2;
    expected.weekOfYear = 11;
    EXPECT_EQ(parts, expected);
}

TEST(CalendarDecomposition, LocaleCalendarSystemIsUsed) {
    // Thai dates count Buddhist-era years in both directions.
    Calendar thai(environment("Asia/Bangkok", "th_TH"));
    const auto date = thai.date(ymd(2569, 3, 10));
    ASSERT_TRUE(date);
    EXPECT_EQ(date->secondsSince1970, utc(2026, 3, 9, 17, 0));
    EXPECT_EQ(thai.dateComponents(kYear, *date).year, 2569);
    Calendar gregorian(environment("Asia/Bangkok", "en_US"));
    EXPECT_EQ(gregorian.dateComponents(kYear, *date).year, 2026);
}

TEST(CalendarDecomposition, BeforeTheCommonEraYearsCountBackwardsWithEraZero) {
    Calendar calendar(environment("Etc/UTC"));
    const auto yearZero = unwrap(calendar.date(ymd(0, 6, 1)));
    const auto parts = calendar.dateComponents(kEra | kYear | kMonth | kDay, yearZero);
    EXPECT_EQ(parts.era, 0);
    EXPECT_EQ(parts.year, 1);
    EXPECT_EQ(parts.month, 6);
    EXPECT_EQ(parts.day, 1);
    DateComponents withEra = ymd(1, 6, 1);
    withEra.era = 0;
    EXPECT_EQ(calendar.date(withEra), yearZero);
    withEra.era = 1;
    EXPECT_EQ(unwrap(calendar.date(withEra)).timeIntervalSince(yearZero), 365 * 86400.0);
}

// --- limits ------------------------------------------------------------------------------------

TEST(CalendarComposition, AbsurdComponentsGiveNoResult) {
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
    constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kInt32Max = std::numeric_limits<std::int32_t>::max();
    std::vector<DateComponents> cases;
    cases.push_back(ymd(1'000'000'000'000, 1, 1));
    cases.push_back(ymd(-1'000'000'000'000, 1, 1));
    cases.push_back(ymd(kInt32Max, 1, 1));
    cases.push_back(ymd(2026, kInt32Max, 1));
    cases.push_back(ymd(2026, 1, kInt32Max));
    cases.push_back(ymd(2026, 1, -kInt32Max));
    cases.push_back(ymd(2026, 1, kMax));
    cases.push_back(ymd(2026, kMin, 1));
    cases.push_back(ymdhms(2026, 1, 1, kMax, 0));
    cases.push_back(ymdhms(2026, 1, 1, 0, 0, kMin));
    cases.push_back(ymdhms(2026, 1, 1, 0, kInt32Max * 2));
    cases.push_back(yearWeekWeekday(2026, kInt32Max, 1));
    cases.push_back(yearWeekWeekday(1'000'000'000'000, 1, 1));
    cases.push_back(yearWeekWeekday(2026, 1, kMax));
    // Large but individually fitting values that together leave ICU's range.
    cases.push_back(ymdhms(2'000'000, 24'000'000, 700'000'000, 0, 0));
    Calendar calendar(environment("Europe/Berlin"));
    for (const auto& c : cases) {
        EXPECT_FALSE(calendar.date(c).has_value())
            << c.year.value_or(0) << " " << c.month.value_or(0) << " " << c.day.value_or(0);
    }
    // An era that the Japanese calendar does not have is an ICU error.
    Calendar japanese(environment("Asia/Tokyo", "ja_JP@calendar=japanese"));
    DateComponents badEra = ymd(5, 1, 1);
    badEra.era = 100'000;
    EXPECT_FALSE(japanese.date(badEra).has_value());
    badEra.era = 236; // Reiwa
    const auto reiwa = japanese.date(badEra);
    ASSERT_TRUE(reiwa);
    EXPECT_EQ(reiwa->secondsSince1970, utc(2022, 12, 31, 15, 0));
}

TEST(CalendarComposition, LargeButReasonableValuesStillCompose) {
    Calendar calendar(environment("Etc/UTC"));
    EXPECT_EQ(unwrap(calendar.date(ymd(1'000'000, 1, 1))).secondsSince1970, utc(1'000'000, 1, 1));
    EXPECT_EQ(unwrap(calendar.date(ymd(2026, 1, 100'000))).secondsSince1970,
              utc(2026, 1, 1) + 99'999 * 86400.0);
    EXPECT_EQ(unwrap(calendar.date(ymd(2026, 1'200, 1))).secondsSince1970, utc(2125, 12, 1));
    EXPECT_EQ(unwrap(calendar.date(ymdhms(2026, 1, 1, 1'000'000, 0))).secondsSince1970,
              utc(2026, 1, 1) + 1'000'000 * 3600.0);
}

TEST(CalendarDecomposition, MomentsOutsideTheRangeDoNotCrash) {
    Calendar calendar(environment("Europe/Berlin"));
    const ComponentSet all = kEra | kYear | kMonth | kDay | kHour | kMinute | kSecond | kWeekday |
                             kWeekdayOrdinal | kWeekOfMonth | kWeekOfYear | kYearForWeekOfYear;
    EXPECT_EQ(calendar.dateComponents(all, Date{std::nan("")}), DateComponents{});
    for (double seconds : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()}) {
        const auto parts = calendar.dateComponents(all, Date{seconds});
        EXPECT_TRUE(parts.year.has_value());
        EXPECT_TRUE(parts.month.has_value());
    }
    // The calendar is still sound afterwards.
    EXPECT_EQ(localDay(calendar, unwrap(calendar.date(ymd(2026, 2, 30)))).day, 2);
}
