// The calendar environment (clock, zone, locale, week rules), the per-thread current calendar,
// the "over" test on top of the clock, fixed-pattern formatting and UUIDs.
#include "TestSupport.h"
#include "base/Fatal.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <unicode/timezone.h>
#include <unicode/unistr.h>
#include <vector>

using namespace tidemark;
using tidemark::testing::fixedEnvironment;
using tidemark::testing::localDate;

namespace {

CalendarEnvironment environment(const std::string& zone, const std::string& locale,
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

/// Sets environment variables for a scope and puts the old values back afterwards.
class ScopedEnvironmentVariables {
public:
    ScopedEnvironmentVariables(std::initializer_list<std::pair<const char*, const char*>> values) {
        for (const auto& [name, value] : values) {
            const char* old = std::getenv(name);
            saved_.push_back({name, old ? std::optional<std::string>(old) : std::nullopt});
            if (value) {
                setenv(name, value, 1);
            } else {
                unsetenv(name);
            }
        }
    }
    ~ScopedEnvironmentVariables() {
        for (const auto& [name, value] : saved_) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }

private:
    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

// 2026-03-10 01:05:07 UTC: 09:05:07 in Shanghai, 21:05:07 the evening before in New York.
constexpr Date kSample{1773104707.0};

} // namespace

// --- environment and current calendar ----------------------------------------------------------

TEST(CalendarEnvironment, CurrentCalendarFollowsChangesOnTheSameThread) {
    ScopedCalendarEnvironment berlin(environment("Europe/Berlin", "de_DE"));
    Calendar& first = Calendar::current();
    EXPECT_EQ(first.timeZoneId(), "Europe/Berlin");
    EXPECT_EQ(first.localeId(), "de_DE");
    EXPECT_EQ(first.firstWeekday(), 2);
    EXPECT_EQ(first.minimumDaysInFirstWeek(), 4);
    const auto berlinMidnight = unwrap(first.date(ymd(2026, 3, 10)));
    {
        ScopedCalendarEnvironment tokyo(environment("Asia/Tokyo", "en_US", 7, 3));
        Calendar& second = Calendar::current();
        EXPECT_EQ(&second, &first); // one calendar per thread, rebuilt in place
        EXPECT_EQ(second.timeZoneId(), "Asia/Tokyo");
        EXPECT_EQ(second.localeId(), "en_US");
        EXPECT_EQ(second.firstWeekday(), 7);
        EXPECT_EQ(second.minimumDaysInFirstWeek(), 3);
        EXPECT_EQ(berlinMidnight.timeIntervalSince(unwrap(second.date(ymd(2026, 3, 10)))),
                  8 * 3600.0);
        EXPECT_EQ(calendarEnvironment().timeZoneId, "Asia/Tokyo");
    }
    EXPECT_EQ(Calendar::current().timeZoneId(), "Europe/Berlin");
    EXPECT_EQ(calendarEnvironment().localeId, "de_DE");
    EXPECT_EQ(Calendar::current().date(ymd(2026, 3, 10)), berlinMidnight);
}

TEST(CalendarEnvironment, OtherThreadsSeeTheEnvironmentWithCalendarsOfTheirOwn) {
    ScopedCalendarEnvironment shanghai(environment("Asia/Shanghai", "zh_CN"));
    Calendar* mine = &Calendar::current();
    Calendar* theirs = nullptr;
    std::string zone;
    std::thread([&] {
        theirs = &Calendar::current();
        zone = Calendar::current().timeZoneId();
    }).join();
    EXPECT_NE(mine, theirs);
    EXPECT_EQ(zone, "Asia/Shanghai");
}

TEST(CalendarEnvironment, ConcurrentChangesGiveConsistentCalendars) {
    // Readers on several threads compose while the environment flips between two zones: every
    // result must belong wholly to one of them.
    const auto berlin = environment("Europe/Berlin", "en_US");
    const auto tokyo = environment("Asia/Tokyo", "en_US");
    const double berlinMidnight = unwrap(Calendar(berlin).date(ymd(2026, 3, 10))).secondsSince1970;
    const double tokyoMidnight = unwrap(Calendar(tokyo).date(ymd(2026, 3, 10))).secondsSince1970;
    ScopedCalendarEnvironment scope(berlin);
    std::atomic<bool> done{false};
    std::atomic<int> mismatches{0};
    std::atomic<int> compositions{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            while (!done.load()) {
                Calendar& calendar = Calendar::current();
                const double t = unwrap(calendar.date(ymd(2026, 3, 10))).secondsSince1970;
                const bool consistent =
                    (t == berlinMidnight && calendar.timeZoneId() == "Europe/Berlin") ||
                    (t == tokyoMidnight && calendar.timeZoneId() == "Asia/Tokyo");
                if (!consistent) {
                    ++mismatches;
                }
                ++compositions;
            }
        });
    }
    for (int i = 0; i < 200; ++i) {
        setCalendarEnvironment(i % 2 ? berlin : tokyo);
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    done = true;
    for (auto& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_GT(compositions.load(), 0);
}

TEST(CalendarEnvironment, NowIsTheFixedClockOrTheRealOne) {
    ScopedCalendarEnvironment fixed(fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 12));
    EXPECT_EQ(now(), Date{1773140400.0}); // 11:00 UTC
    EXPECT_EQ(Date{1773140400.0 + 90}.timeIntervalSinceNow(), 90.0);
    {
        ScopedCalendarEnvironment real(environment("Europe/Berlin", "en_US"));
        const double system =
            std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
                .count();
        EXPECT_NEAR(now().secondsSince1970, system, 1.0);
        bool fractional = false;
        for (int i = 0; i < 50 && !fractional; ++i) {
            fractional = std::fmod(now().secondsSince1970, 1.0) != 0.0;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_TRUE(fractional);
    }
    EXPECT_EQ(now(), Date{1773140400.0});
}

TEST(CalendarEnvironment, WeekRuleOverridesOutsideOneToSevenAreIgnored) {
    Calendar calendar(environment("Europe/Berlin", "en_US", 0, 8));
    EXPECT_EQ(calendar.firstWeekday(), 1);
    EXPECT_EQ(calendar.minimumDaysInFirstWeek(), 1);
    Calendar german(environment("Europe/Berlin", "de_DE", 9, -1));
    EXPECT_EQ(german.firstWeekday(), 2);
    EXPECT_EQ(german.minimumDaysInFirstWeek(), 4);
}

TEST(CalendarEnvironment, EmptyLocaleAndZoneAreTheSystems) {
    struct Case {
        const char *lcAll, *lcTime, *lang;
        const char* expectedLocale;
        int expectedFirstWeekday;
    };
    const Case cases[] = {
        {nullptr, "de_DE.UTF-8", "en_US.UTF-8", "de_DE", 2},
        {"zh_CN.UTF-8", "de_DE.UTF-8", "en_US.UTF-8", "zh_CN", 2},
        {"", "", "en_GB.UTF-8@euro", "en_GB", 2},
        {"C", nullptr, "de_DE.UTF-8", "en_US_POSIX", 1},
        {nullptr, nullptr, "C.UTF-8", "en_US_POSIX", 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expectedLocale);
        ScopedEnvironmentVariables variables(
            {{"LC_ALL", c.lcAll}, {"LC_TIME", c.lcTime}, {"LANG", c.lang}});
        Calendar calendar(CalendarEnvironment{});
        EXPECT_EQ(calendar.localeId(), c.expectedLocale);
        EXPECT_EQ(calendar.firstWeekday(), c.expectedFirstWeekday);
    }
    std::unique_ptr<icu::TimeZone> defaultZone(icu::TimeZone::createDefault());
    icu::UnicodeString id;
    std::string expectedZone;
    defaultZone->getID(id).toUTF8String(expectedZone);
    EXPECT_EQ(Calendar(CalendarEnvironment{}).timeZoneId(), expectedZone);
}

TEST(CalendarEnvironment, MovedCalendarsKeepWorking) {
    Calendar source(environment("Asia/Shanghai", "zh_CN"));
    EXPECT_EQ(source.format(kSample, "HH:mm"), "09:05");
    Calendar moved(std::move(source));
    EXPECT_EQ(moved.format(kSample, "HH:mm"), "09:05");
    moved = Calendar(environment("America/New_York", "en_US"));
    EXPECT_EQ(moved.format(kSample, "HH:mm"), "21:05");
    EXPECT_EQ(moved.timeZoneId(), "America/New_York");
}

// --- when a date is over -----------------------------------------------------------------------

TEST(CalendarOverTest, TodaysMidnightIsOpenThroughTodayAndOverFromTheNextMidnight) {
    struct Case {
        const char* label;
        int year, month, day; // today; the date tested is its 00:00
        int nowDay, nowHour, nowMinute;
        double expectedInterval;
    };
    const Case cases[] = {
        {"ordinary day, 23:59", 2026, 3, 10, 10, 23, 59, -86340},
        {"ordinary day, next midnight", 2026, 3, 10, 11, 0, 0, -86400},
        {"ordinary day, noon after", 2026, 3, 10, 11, 12, 0, -129600},
        // A 23-hour day: still open at the next midnight, over an hour later.
        {"spring forward, next midnight", 2026, 3, 29, 30, 0, 0, -82800},
        {"spring forward, 01:00 after", 2026, 3, 29, 30, 1, 0, -86400},
        // A 25-hour day: over an hour before the next midnight.
        {"fall back, 23:00", 2026, 10, 25, 25, 23, 0, -86400},
        {"fall back, 22:59", 2026, 10, 25, 25, 22, 59, -86340},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        ScopedCalendarEnvironment scope(fixedEnvironment("Europe/Berlin", "de_DE", c.year, c.month,
                                                         c.nowDay, c.nowHour, c.nowMinute));
        const Date today = localDate(c.year, c.month, c.day);
        const double interval = today.timeIntervalSinceNow();
        EXPECT_EQ(interval, c.expectedInterval);
        const bool open = interval > -86400.0;
        EXPECT_EQ(open, c.expectedInterval > -86400.0);
    }
}

// --- formatting --------------------------------------------------------------------------------

TEST(CalendarFormat, FixedPatternsInTheCalendarsZone) {
    struct Case {
        const char* pattern;
        const char* shanghai;
        const char* newYork;
    };
    const Case cases[] = {
        {"yyyyMMddHHmmss", "20260310090507", "20260309210507"},
        {"yyyy-MM-dd / HH:mm", "2026-03-10 / 09:05", "2026-03-09 / 21:05"},
        {"yyyyMMdd", "20260310", "20260309"},
        {"yyyy-MM-dd / HH:mm:ss", "2026-03-10 / 09:05:07", "2026-03-09 / 21:05:07"},
        {"yyyy-MM-dd", "2026-03-10", "2026-03-09"},
        {"HH:mm:ss", "09:05:07", "21:05:07"},
    };
    for (const char* locale : {"en_US", "zh_CN", "de_DE"}) {
        Calendar shanghai(environment("Asia/Shanghai", locale));
        Calendar newYork(environment("America/New_York", locale));
        // Twice over, so that cached formatters are used and must not mix up patterns.
        for (int round = 0; round < 2; ++round) {
            for (const auto& c : cases) {
                SCOPED_TRACE(std::string(locale) + " " + c.pattern);
                EXPECT_EQ(shanghai.format(kSample, c.pattern), c.shanghai);
                EXPECT_EQ(newYork.format(kSample, c.pattern), c.newYork);
            }
        }
    }
}

TEST(CalendarFormat, FormattersUseTheCalendarsSystemAndWeekRules) {
    Calendar thai(environment("Asia/Bangkok", "th_TH"));
    EXPECT_EQ(thai.format(kSample, "yyyy-MM-dd"), "2569-03-10");
    // 30 December 2024 is in week 1 under both rules, 1 January 2021 only under US rules.
    Calendar us(environment("Etc/UTC", "en_US"));
    Calendar iso(environment("Etc/UTC", "en_US", 2, 4));
    const Date newYear2021{1609502400.0}; // 2021-01-01 12:00 UTC
    EXPECT_EQ(us.format(newYear2021, "w"), "1");
    EXPECT_EQ(iso.format(newYear2021, "w"), "53");
    EXPECT_EQ(iso.format(newYear2021, "YYYY"), "2020");
}

TEST(CalendarFormat, AbbreviatedDateInTheLocale) {
    struct Case {
        const char* locale;
        const char* withYear;
        const char* withoutYear;
    };
    const Case cases[] = {
        {"en_US", "Mar 10, 2026", "Mar 10"},
        {"zh_CN", "2026年3月10日", "3月10日"},
        {"de_DE", "10. März 2026", "10. März"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.locale);
        Calendar calendar(environment("Asia/Shanghai", c.locale));
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(calendar.formatAbbreviated(kSample), c.withYear);
            EXPECT_EQ(calendar.formatAbbreviated(kSample, false), c.withoutYear);
        }
    }
    // The day is the calendar's local day.
    Calendar newYork(environment("America/New_York", "en_US"));
    EXPECT_EQ(newYork.formatAbbreviated(kSample), "Mar 9, 2026");
}

// --- UUIDs -------------------------------------------------------------------------------------

TEST(CalendarUUID, RandomVersionFourInUpperCase) {
    const std::regex form("^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$");
    std::set<std::string> seen;
    std::set<char> variantDigits;
    std::vector<std::set<char>> digitsAt(36);
    for (int i = 0; i < 2000; ++i) {
        const auto uuid = newUUIDString();
        ASSERT_EQ(uuid.size(), 36u);
        ASSERT_TRUE(std::regex_match(uuid, form)) << uuid;
        EXPECT_TRUE(seen.insert(uuid).second) << uuid;
        for (std::size_t k = 0; k < uuid.size(); ++k) {
            digitsAt[k].insert(uuid[k]);
        }
    }
    // Every freely random position takes all sixteen digits over 2000 draws; the variant
    // position takes its four.
    for (std::size_t k = 0; k < 36; ++k) {
        if (k == 8 || k == 13 || k == 18 || k == 23 || k == 14) {
            continue;
        }
        EXPECT_EQ(digitsAt[k].size(), k == 19 ? 4u : 16u) << "position " << k;
    }
}
