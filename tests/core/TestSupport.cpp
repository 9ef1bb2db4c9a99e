#include "TestSupport.h"

#include <cstdlib>
#include <stdexcept>

namespace tidemark::testing {

TempDir::TempDir() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "tidemark-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        throw std::runtime_error("mkdtemp failed");
    }
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

CalendarEnvironment fixedEnvironment(const std::string& timeZoneId, const std::string& localeId,
                                     int year, int month, int day, int hour, int minute,
                                     int second) {
    CalendarEnvironment env;
    env.timeZoneId = timeZoneId;
    env.localeId = localeId;
    Calendar calendar(env);
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    c.hour = hour;
    c.minute = minute;
    c.second = second;
    env.fixedNow = calendar.date(c);
    if (!env.fixedNow) {
        throw std::runtime_error("fixedEnvironment: no such date");
    }
    return env;
}

CalendarEnvironment zoneEnvironment(const std::string& timeZoneId, const std::string& localeId,
                                    std::optional<int> firstWeekday,
                                    std::optional<int> minimumDaysInFirstWeek) {
    CalendarEnvironment env;
    env.timeZoneId = timeZoneId;
    env.localeId = localeId;
    env.firstWeekday = firstWeekday;
    env.minimumDaysInFirstWeek = minimumDaysInFirstWeek;
    return env;
}

DateComponents dateParts(std::int64_t year, std::int64_t month, std::int64_t day,
                         std::optional<std::int64_t> hour, std::optional<std::int64_t> minute,
                         std::optional<std::int64_t> second) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    c.hour = hour;
    c.minute = minute;
    c.second = second;
    return c;
}

Date localDate(int year, int month, int day, int hour, int minute, int second) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    c.hour = hour;
    c.minute = minute;
    c.second = second;
    auto d = Calendar::current().date(c);
    if (!d) {
        throw std::runtime_error("localDate: no such date");
    }
    return *d;
}

} // namespace tidemark::testing
