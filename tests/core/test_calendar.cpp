// Lenient composition, week numbering, clock changes and decomposition of the ICU calendar layer.
// Expected moments are computed here from the proleptic Gregorian calendar and known UTC offsets,
// independently of ICU.
#include "TestSupport.h"
#include "base/Fatal.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using namespace tidemark;
using tidemark::testing::dateParts;
using tidemark::testing::zoneEnvironment;

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

DateComponents yearWeekWeekday(std::int64_t year, std::int64_t week, std::int64_t weekday) {
    DateComponents c;
    c.year = year;
    c.weekOfYear = week;
    c.weekday = weekday;
    return c;
}

constexpr ComponentSet kWall = kYear | kMonth | kDay | kHour | kMinute | kSecond;

} // namespace

TEST(CalendarComposition, ComposesTheUtcMomentOfALenientLocalWallTime) {
    struct Case {
        const char* zone;
        DateComponents local;
        double expectedUtc;
    };
    const Case cases[] = {
        // Overflowing, zero and negative fields carry; absent time fields are local midnight.
        {"Etc/UTC", dateParts(2026, 2, 30), utc(2026, 3, 2)},
        {"Etc/UTC", dateParts(2024, 3, 0), utc(2024, 2, 29)},
        {"Etc/UTC", dateParts(2026, 1, 0), utc(2025, 12, 31)},
        {"Etc/UTC", dateParts(2026, 14, 1), utc(2027, 2, 1)},
        {"Etc/UTC", dateParts(2026, -1, 15), utc(2025, 11, 15)},
        {"Etc/UTC", dateParts(2026, 1, 2000), utc(2031, 6, 23)},
        {"Pacific/Auckland", dateParts(2027, 15, 0), utc(2028, 2, 28, 11)},
        {"Pacific/Auckland", dateParts(2026, 0, 15), utc(2025, 12, 14, 11)},
        {"Etc/UTC", dateParts(2026, 12, 31, 24, 0), utc(2027, 1, 1)},
        {"Etc/UTC", dateParts(2026, 3, 10, 0, 90, 61), utc(2026, 3, 10, 1, 31, 1)},
        {"Etc/UTC", dateParts(2026, 3, 10, -1, 0), utc(2026, 3, 9, 23, 0)},
        // Zone offsets, summer and winter.
        {"Asia/Shanghai", dateParts(2026, 3, 10, 9, 5, 7), utc(2026, 3, 10, 1, 5, 7)},
        {"America/New_York", dateParts(2026, 7, 4, 20, 0), utc(2026, 7, 5, 0, 0)},
        {"Pacific/Auckland", dateParts(2026, 1, 15, 12, 0), utc(2026, 1, 14, 23, 0)},
        // Clocks go back (02:00-03:00 twice in Berlin, 01:00-02:00 in New York): the earlier.
        {"Europe/Berlin", dateParts(2026, 10, 25, 2, 0), utc(2026, 10, 25, 0, 0)},
        {"Europe/Berlin", dateParts(2026, 10, 25, 3, 0), utc(2026, 10, 25, 2, 0)},
        {"America/New_York", dateParts(2026, 11, 1, 1, 30), utc(2026, 11, 1, 5, 30)},
        // Clocks go forward: a missing wall time is read with the offset before the gap.
        {"Europe/Berlin", dateParts(2026, 3, 29, 2, 0), utc(2026, 3, 29, 1, 0)},
        {"America/New_York", dateParts(2026, 3, 8, 2, 30), utc(2026, 3, 8, 7, 30)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.zone) + " " + std::to_string(*c.local.year) + "-" +
                     std::to_string(*c.local.month) + "-" + std::to_string(*c.local.day) + " " +
                     std::to_string(c.local.hour.value_or(0)));
        EXPECT_EQ(Calendar(zoneEnvironment(c.zone)).date(c.local), Date{c.expectedUtc});
    }
}

TEST(CalendarComposition, MonthWithWeekdayOrdinalOrWeekOfMonth) {
    Calendar calendar(zoneEnvironment("Europe/Berlin"));
    DateComponents second;
    second.year = 2026;
    second.month = 3;
    second.weekday = 3; // the second Tuesday
    second.weekdayOrdinal = 2;
    EXPECT_EQ(calendar.date(second), Date{utc(2026, 3, 9, 23, 0)});
    DateComponents inWeek = second;
    inWeek.weekdayOrdinal.reset();
    inWeek.weekOfMonth = 3;
    inWeek.weekday = 1; // Sunday of the third week (US weeks run Sunday to Saturday)
    EXPECT_EQ(calendar.date(inWeek), Date{utc(2026, 3, 14, 23, 0)});
}

TEST(CalendarComposition, YearIsTheWeekNumberingYearAndLateWeeksRunOn) {
    struct Case {
        const char* locale;
        std::optional<int> firstWeekday, minimumDays;
        std::int64_t year, week, weekday;
        double expectedUtc;
    };
    const Case cases[] = {
        // US weeks: Sunday first, the week of 1 January is week 1.
        {"en_US", {}, {}, 2024, 1, 1, utc(2023, 12, 31)},
        {"en_US", {}, {}, 2026, 1, 5, utc(2026, 1, 1)},
        {"en_US", {}, {}, 2024, 53, 1, utc(2024, 12, 29)},
        // German (ISO) weeks: Monday first, at least four days in week 1.
        {"de_DE", {}, {}, 2026, 1, 2, utc(2025, 12, 29)},
        {"de_DE", {}, {}, 2027, 53, 5, utc(2028, 1, 6)},
        {"de_DE", {}, {}, 2025, 1, 1, utc(2025, 1, 5)}, // Sunday ends the week
        {"de_DE", {}, {}, 2024, 54, 2, utc(2025, 1, 6)},
        // The same rules forced onto an American locale, and the reverse.
        {"en_US", 2, 4, 2027, 53, 5, utc(2028, 1, 6)},
        {"de_DE", 1, 1, 2024, 1, 1, utc(2023, 12, 31)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.year) + " week " +
                     std::to_string(c.week) + " weekday " + std::to_string(c.weekday));
        Calendar calendar(zoneEnvironment("Etc/UTC", c.locale, c.firstWeekday, c.minimumDays));
        EXPECT_EQ(calendar.date(yearWeekWeekday(c.year, c.week, c.weekday)), Date{c.expectedUtc});
    }
}

TEST(CalendarComposition, YearForWeekOfYearTakesPrecedenceOverYear) {
    DateComponents c = yearWeekWeekday(1999, 1, 2);
    c.yearForWeekOfYear = 2026;
    EXPECT_EQ(Calendar(zoneEnvironment("Etc/UTC", "de_DE")).date(c), Date{utc(2025, 12, 29)});
}

TEST(CalendarDecomposition, WallTimesAndMomentsRoundTrip) {
    for (const char* zone : {"Europe/Berlin", "Asia/Shanghai"}) {
        SCOPED_TRACE(zone);
        Calendar calendar(zoneEnvironment(zone));
        // Far-off and pre-1970 wall times come back unchanged.
        for (const auto& wall :
             {dateParts(1969, 12, 31, 23, 0, 0), dateParts(1900, 6, 15, 12, 0, 0),
              dateParts(2100, 2, 28, 6, 45, 59)}) {
            EXPECT_EQ(calendar.dateComponents(kWall, unwrap(calendar.date(wall))), wall);
        }
        // Every moment over two years, stepped unevenly, composes back from its wall time,
        // except in a repeated hour, where the earlier one wins.
        int repeated = 0;
        for (double t = utc(2025, 1, 1); t < utc(2027, 1, 1); t += 17 * 60 + 13) {
            const auto back = calendar.date(calendar.dateComponents(kWall, Date{t}));
            ASSERT_TRUE(back.has_value());
            if (back->secondsSince1970 != t) {
                ASSERT_EQ(t - back->secondsSince1970, 3600.0) << std::to_string(t);
                ++repeated;
            }
        }
        EXPECT_EQ(repeated > 0, std::string(zone) == "Europe/Berlin");
    }
}

TEST(CalendarDecomposition, WeekFieldsFollowTheLocaleRules) {
    struct Case {
        const char* locale;
        std::int64_t year, month, day;
        std::int64_t weekOfYear, yearForWeekOfYear, weekOfMonth, weekdayOrdinal, weekday;
    };
    const Case cases[] = {
        {"de_DE", 2024, 12, 30, 1, 2025, 5, 5, 2}, {"de_DE", 2021, 1, 1, 53, 2020, 0, 1, 6},
        {"en_US", 2021, 1, 1, 1, 2021, 1, 1, 6},   {"de_DE", 2026, 3, 1, 9, 2026, 0, 1, 1},
        {"en_US", 2026, 3, 10, 11, 2026, 2, 2, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + std::to_string(c.year) + "-" +
                     std::to_string(c.month) + "-" + std::to_string(c.day));
        Calendar calendar(zoneEnvironment("Asia/Shanghai", c.locale));
        const auto date = unwrap(calendar.date(dateParts(c.year, c.month, c.day, 13, 0)));
        const auto parts = calendar.dateComponents(kWeekOfYear | kYearForWeekOfYear | kWeekOfMonth |
                                                       kWeekdayOrdinal | kWeekday | kEra,
                                                   date);
        DateComponents expected;
        expected.weekOfYear = c.weekOfYear;
        expected.yearForWeekOfYear = c.yearForWeekOfYear;
        expected.weekOfMonth = c.weekOfMonth;
        expected.weekdayOrdinal = c.weekdayOrdinal;
        expected.weekday = c.weekday;
        expected.era = 1; // AD; and only what was asked for
        EXPECT_EQ(parts, expected);
        // A date's own year, week and weekday compose back to it.
        DateComponents back = yearWeekWeekday(0, c.weekOfYear, c.weekday);
        back.year.reset();
        back.yearForWeekOfYear = c.yearForWeekOfYear;
        back.hour = 13;
        EXPECT_EQ(calendar.date(back), date);
    }
}

TEST(CalendarDecomposition, LocaleCalendarSystemAndEras) {
    // Thai dates count Buddhist-era years in both directions.
    Calendar thai(zoneEnvironment("Asia/Bangkok", "th_TH"));
    const auto date = unwrap(thai.date(dateParts(2569, 3, 10)));
    EXPECT_EQ(date.secondsSince1970, utc(2026, 3, 9, 17, 0));
    EXPECT_EQ(thai.dateComponents(kYear, date).year, 2569);
    EXPECT_EQ(Calendar(zoneEnvironment("Asia/Bangkok")).dateComponents(kYear, date).year, 2026);
    // Before the common era years count backwards with era 0.
    Calendar calendar(zoneEnvironment("Etc/UTC"));
    const auto yearZero = unwrap(calendar.date(dateParts(0, 6, 1)));
    DateComponents withEra = dateParts(1, 6, 1);
    withEra.era = 0;
    EXPECT_EQ(calendar.dateComponents(kEra | kYear | kMonth | kDay, yearZero), withEra);
    EXPECT_EQ(calendar.date(withEra), yearZero);
    withEra.era = 1;
    EXPECT_EQ(unwrap(calendar.date(withEra)).timeIntervalSince(yearZero), 365 * 86400.0);
}

TEST(CalendarComposition, AbsurdComponentsGiveNoResultButLargeOnesCompose) {
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
    constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kInt32Max = std::numeric_limits<std::int32_t>::max();
    const DateComponents absurd[] = {
        dateParts(1'000'000'000'000, 1, 1), dateParts(2026, kInt32Max, 1),
        dateParts(2026, 1, -kInt32Max), dateParts(2026, 1, kMax), dateParts(2026, kMin, 1),
        dateParts(2026, 1, 1, 0, 0, kMin), dateParts(2026, 1, 1, 0, kInt32Max * 2),
        yearWeekWeekday(2026, kInt32Max, 1), yearWeekWeekday(2026, 1, kMax),
        // Large but individually fitting values that together leave ICU's range.
        dateParts(2'000'000, 24'000'000, 700'000'000)};
    Calendar calendar(zoneEnvironment("Europe/Berlin"));
    for (const auto& c : absurd) {
        EXPECT_FALSE(calendar.date(c).has_value())
            << c.year.value_or(0) << " " << c.month.value_or(0) << " " << c.day.value_or(0);
    }
    Calendar utcCalendar(zoneEnvironment("Etc/UTC"));
    EXPECT_EQ(utcCalendar.date(dateParts(1'000'000, 1, 1)), Date{utc(1'000'000, 1, 1)});
    EXPECT_EQ(utcCalendar.date(dateParts(2026, 1, 1, 1'000'000)),
              Date{utc(2026, 1, 1) + 1'000'000 * 3600.0});
    // An era that the Japanese calendar does not have is an ICU error.
    Calendar japanese(zoneEnvironment("Asia/Tokyo", "ja_JP@calendar=japanese"));
    DateComponents era = dateParts(5, 1, 1);
    era.era = 100'000;
    EXPECT_FALSE(japanese.date(era).has_value());
    era.era = 236; // Reiwa
    EXPECT_EQ(japanese.date(era), Date{utc(2022, 12, 31, 15, 0)});
}

TEST(CalendarDecomposition, MomentsOutsideTheRangeDoNotCrash) {
    Calendar calendar(zoneEnvironment("Europe/Berlin"));
    const ComponentSet all =
        kWall | kEra | kWeekday | kWeekdayOrdinal | kWeekOfMonth | kWeekOfYear | kYearForWeekOfYear;
    EXPECT_EQ(calendar.dateComponents(all, Date{std::nan("")}), DateComponents{});
    for (double seconds : {1e300, -std::numeric_limits<double>::infinity()}) {
        const auto parts = calendar.dateComponents(all, Date{seconds});
        EXPECT_TRUE(parts.year.has_value() && parts.month.has_value());
    }
    // The calendar is still sound afterwards.
    EXPECT_EQ(calendar.date(dateParts(2026, 2, 30)), Date{utc(2026, 3, 1, 23, 0)});
}
