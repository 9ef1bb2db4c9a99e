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
using tidemark::testing::zoneEnvironment;

namespace {

Date midnight(Calendar& calendar) {
    return unwrap(calendar.date(tidemark::testing::dateParts(2026, 3, 10)));
}

/// Sets (or, for null, unsets) an environment variable for a scope.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) {
            old_ = old;
        }
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~ScopedVariable() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> old_;
};

// 2026-03-10 01:05:07 UTC: 09:05:07 in Shanghai, 21:05:07 the evening before in New York.
constexpr Date kSample{1773104707.0};

} // namespace

TEST(CalendarEnvironment, CurrentCalendarFollowsChangesOnTheSameThread) {
    ScopedCalendarEnvironment berlin(zoneEnvironment("Europe/Berlin", "de_DE"));
    Calendar& first = Calendar::current();
    EXPECT_EQ(first.firstWeekday(), 2);
    EXPECT_EQ(first.minimumDaysInFirstWeek(), 4);
    const auto berlinMidnight = midnight(first);
    {
        ScopedCalendarEnvironment tokyo(zoneEnvironment("Asia/Tokyo", "en_US", 7, 3));
        Calendar& second = Calendar::current();
        EXPECT_EQ(&second, &first); // one calendar per thread, rebuilt in place
        EXPECT_EQ(second.timeZoneId(), "Asia/Tokyo");
        EXPECT_EQ(second.localeId(), "en_US");
        EXPECT_EQ(second.firstWeekday(), 7);
        EXPECT_EQ(second.minimumDaysInFirstWeek(), 3);
        EXPECT_EQ(berlinMidnight.timeIntervalSince(midnight(second)), 8 * 3600.0);
        EXPECT_EQ(calendarEnvironment().timeZoneId, "Asia/Tokyo");
    }
    EXPECT_EQ(Calendar::current().timeZoneId(), "Europe/Berlin");
    EXPECT_EQ(calendarEnvironment().localeId, "de_DE");
    EXPECT_EQ(midnight(Calendar::current()), berlinMidnight);
}

TEST(CalendarEnvironment, ConcurrentChangesGiveConsistentCalendars) {
    // Readers compose while the environment flips between two zones: every result must belong
    // wholly to one of them.
    const auto berlin = zoneEnvironment("Europe/Berlin", "en_US");
    const auto tokyo = zoneEnvironment("Asia/Tokyo", "en_US");
    Calendar berlinCalendar(berlin), tokyoCalendar(tokyo);
    const Date berlinMidnight = midnight(berlinCalendar), tokyoMidnight = midnight(tokyoCalendar);
    ScopedCalendarEnvironment scope(berlin);
    std::atomic<bool> done{false};
    std::atomic<int> mismatches{0}, compositions{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            while (!done.load()) {
                Calendar& calendar = Calendar::current();
                const Date t = midnight(calendar);
                mismatches += !((t == berlinMidnight && calendar.timeZoneId() == "Europe/Berlin") ||
                                (t == tokyoMidnight && calendar.timeZoneId() == "Asia/Tokyo"));
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
        ScopedCalendarEnvironment real(zoneEnvironment("Europe/Berlin", "en_US"));
        const double system =
            std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
                .count();
        EXPECT_NEAR(now().secondsSince1970, system, 1.0);
        bool fractional = false; // the real clock is finer than whole seconds
        for (int i = 0; i < 50 && !fractional; ++i) {
            fractional = std::fmod(now().secondsSince1970, 1.0) != 0.0;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_TRUE(fractional);
    }
    EXPECT_EQ(now(), Date{1773140400.0});
}

TEST(CalendarEnvironment, WeekRuleOverridesOutsideOneToSevenAreIgnored) {
    Calendar german(zoneEnvironment("Europe/Berlin", "de_DE", 9, -1));
    EXPECT_EQ(german.firstWeekday(), 2);
    EXPECT_EQ(german.minimumDaysInFirstWeek(), 4);
    Calendar us(zoneEnvironment("Europe/Berlin", "en_US", 0, 8));
    EXPECT_EQ(us.firstWeekday(), 1);
    EXPECT_EQ(us.minimumDaysInFirstWeek(), 1);
}

TEST(CalendarEnvironment, EmptyLocaleAndZoneAreTheSystems) {
    struct Case {
        const char *lcAll, *lcTime, *lang, *expectedLocale;
        int expectedFirstWeekday;
    };
    const Case cases[] = {
        {nullptr, "de_DE.UTF-8", "en_US.UTF-8", "de_DE", 2},
        {"zh_CN.UTF-8", "de_DE.UTF-8", "en_US.UTF-8", "zh_CN", 2},
        {"", "", "en_GB.UTF-8@euro", "en_GB", 2},
        {"C", nullptr, "de_DE.UTF-8", "en_US_POSIX", 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expectedLocale);
        ScopedVariable all("LC_ALL", c.lcAll), time("LC_TIME", c.lcTime), lang("LANG", c.lang);
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
    Calendar source(zoneEnvironment("Asia/Shanghai", "zh_CN"));
    EXPECT_EQ(source.format(kSample, "HH:mm"), "09:05");
    Calendar moved(std::move(source));
    EXPECT_EQ(moved.format(kSample, "HH:mm"), "09:05");
    moved = Calendar(zoneEnvironment("America/New_York", "en_US"));
    EXPECT_EQ(moved.format(kSample, "HH:mm"), "21:05");
}

TEST(CalendarFormat, FixedPatternsInTheCalendarsZone) {
    struct Case {
        const char *pattern, *shanghai, *newYork;
    };
    const Case cases[] = {
        {"yyyyMMddHHmmss", "20260310090507", "20260309210507"},
        {"yyyy-MM-dd / HH:mm", "2026-03-10 / 09:05", "2026-03-09 / 21:05"},
        {"yyyyMMdd", "20260310", "20260309"},
        {"yyyy-MM-dd / HH:mm:ss", "2026-03-10 / 09:05:07", "2026-03-09 / 21:05:07"},
        {"yyyy-MM-dd", "2026-03-10", "2026-03-09"},
        {"HH:mm:ss", "09:05:07", "21:05:07"},
    };
    for (const char* locale : {"en_US", "zh_CN"}) {
        Calendar shanghai(zoneEnvironment("Asia/Shanghai", locale));
        Calendar newYork(zoneEnvironment("America/New_York", locale));
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
    EXPECT_EQ(Calendar(zoneEnvironment("Asia/Bangkok", "th_TH")).format(kSample, "yyyy-MM-dd"),
              "2569-03-10");
    // 1 January 2021 is in week 1 only under US rules.
    Calendar us(zoneEnvironment("Etc/UTC", "en_US"));
    Calendar iso(zoneEnvironment("Etc/UTC", "en_US", 2, 4));
    const Date newYear2021{1609502400.0}; // 2021-01-01 12:00 UTC
    EXPECT_EQ(us.format(newYear2021, "w"), "1");
    EXPECT_EQ(iso.format(newYear2021, "w"), "53");
    EXPECT_EQ(iso.format(newYear2021, "YYYY"), "2020");
}

TEST(CalendarFormat, AbbreviatedDateInTheLocale) {
    Calendar us(zoneEnvironment("Asia/Shanghai", "en_US"));
    Calendar chinese(zoneEnvironment("Asia/Shanghai", "zh_CN"));
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(us.formatAbbreviated(kSample), "Mar 10, 2026");
        EXPECT_EQ(us.formatAbbreviated(kSample, false), "Mar 10");
        EXPECT_EQ(chinese.formatAbbreviated(kSample), "2026年3月10日");
        EXPECT_EQ(chinese.formatAbbreviated(kSample, false), "3月10日");
    }
    // The day is the calendar's local day.
    EXPECT_EQ(Calendar(zoneEnvironment("America/New_York", "en_US")).formatAbbreviated(kSample),
              "Mar 9, 2026");
}

TEST(CalendarUUID, RandomVersionFourInUpperCase) {
    const std::regex form("^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$");
    std::set<std::string> seen;
    std::vector<std::set<char>> digitsAt(36);
    for (int i = 0; i < 2000; ++i) {
        const auto uuid = newUUIDString();
        ASSERT_TRUE(std::regex_match(uuid, form)) << uuid;
        EXPECT_TRUE(seen.insert(uuid).second) << uuid;
        for (std::size_t k = 0; k < uuid.size(); ++k) {
            digitsAt[k].insert(uuid[k]);
        }
    }
    // Every freely random position takes all sixteen digits; the variant position its four.
    for (std::size_t k : {0, 7, 9, 15, 19, 20, 24, 35}) {
        EXPECT_EQ(digitsAt[k].size(), k == 19 ? 4u : 16u) << "position " << k;
    }
}
