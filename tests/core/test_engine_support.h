// Shared pieces of the engine tests: a clock and a place per case, occurrence elements and list
// comparison.
#pragma once

#include "RecordSupport.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tidemark {

inline void PrintTo(const DateComponents& c, std::ostream* os) {
    const auto part = [&](const char* name, const std::optional<std::int64_t>& v) {
        if (v) {
            *os << name << *v << ' ';
        }
    };
    *os << "{ ";
    part("y", c.year);
    part("m", c.month);
    part("d", c.day);
    part("h", c.hour);
    part("min", c.minute);
    part("woy", c.weekOfYear);
    part("wd", c.weekday);
    *os << '}';
}

} // namespace tidemark

namespace tidemark::testing {

/// A clock and a place for one case: wall time in a zone, a locale, optionally a first weekday.
struct Scene {
    std::string zone = "Europe/Berlin";
    std::string locale = "en_US";
    int year = 2026, month = 3, day = 10, hour = 8, minute = 0;
    std::optional<int> firstWeekday = std::nullopt;

    CalendarEnvironment environment() const {
        CalendarEnvironment env = fixedEnvironment(zone, locale, year, month, day, hour, minute);
        env.firstWeekday = firstWeekday;
        return env;
    }
};

inline DateComponents ymd(std::int64_t y, std::int64_t m, std::int64_t d) {
    return dateParts(y, m, d);
}

inline DateComponents ymdhm(std::int64_t y, std::int64_t m, std::int64_t d, std::int64_t h,
                            std::int64_t min) {
    return dateParts(y, m, d, h, min);
}

/// The elements f(i) for i from `first` to `last`.
inline std::vector<DateComponents> series(int first, int last,
                                          const std::function<DateComponents(int)>& f) {
    std::vector<DateComponents> out;
    for (int i = first; i <= last; ++i) {
        out.push_back(f(i));
    }
    return out;
}

inline std::vector<DateComponents> concat(std::vector<DateComponents> a,
                                          const std::vector<DateComponents>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// Names parameterised cases by their `name` member.
struct CaseName {
    template <class Case> std::string operator()(const ::testing::TestParamInfo<Case>& info) const {
        return info.param.name;
    }
};

/// Element by element, in order: components (absent ones included), length and duplicates.
inline ::testing::AssertionResult sameList(const std::vector<DateComponents>& actual,
                                           const std::vector<DateComponents>& expected) {
    const std::size_t common = std::min(actual.size(), expected.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (!(actual[i] == expected[i])) {
            return ::testing::AssertionFailure()
                   << "element " << i << " is " << ::testing::PrintToString(actual[i])
                   << ", expected " << ::testing::PrintToString(expected[i]);
        }
    }
    if (actual.size() != expected.size()) {
        auto failure = ::testing::AssertionFailure();
        failure << actual.size() << " elements, expected " << expected.size();
        if (actual.size() > common) {
            failure << "; first extra " << ::testing::PrintToString(actual[common]);
        } else {
            failure << "; first missing " << ::testing::PrintToString(expected[common]);
        }
        return failure;
    }
    return ::testing::AssertionSuccess();
}

} // namespace tidemark::testing
