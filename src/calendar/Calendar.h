// The stand-in for the phone's calendar: dates, lenient composition, decomposition and the
// fixed formats, all on ICU. Everything that asks for "now", the time zone, the locale or the
// first weekday goes through this header, so that a test (or the app's --now/--time-zone/--locale
// options) can fix all of them through CalendarEnvironment.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A moment: seconds since 1970-01-01T00:00:00Z, as a double (the platform's Date).
struct Date {
    double secondsSince1970 = 0;

    /// Seconds from `other` to this date (positive when this date is later).
    double timeIntervalSince(Date other) const { return secondsSince1970 - other.secondsSince1970; }
    /// Seconds from the environment's "now" to this date.
    double timeIntervalSinceNow() const;
    Date addingTimeInterval(double seconds) const { return Date{secondsSince1970 + seconds}; }

    bool operator==(const Date&) const = default;
    bool operator<(const Date& other) const { return secondsSince1970 < other.secondsSince1970; }
    bool operator>(const Date& other) const { return secondsSince1970 > other.secondsSince1970; }
    bool operator<=(const Date& other) const { return secondsSince1970 <= other.secondsSince1970; }
    bool operator>=(const Date& other) const { return secondsSince1970 >= other.secondsSince1970; }
};

/// Loose calendar numbers. Nothing is normalised: day 35 and month 14 are legal and only mean
/// a date through Calendar::date(). Two values are equal when all their components are equal.
struct DateComponents {
    std::optional<std::int64_t> era;
    std::optional<std::int64_t> year;
    std::optional<std::int64_t> month;
    std::optional<std::int64_t> day;
    std::optional<std::int64_t> hour;
    std::optional<std::int64_t> minute;
    std::optional<std::int64_t> second;
    std::optional<std::int64_t> weekday; ///< 1 Sunday ... 7 Saturday
    std::optional<std::int64_t> weekdayOrdinal;
    std::optional<std::int64_t> weekOfMonth;
    std::optional<std::int64_t> weekOfYear;
    std::optional<std::int64_t> yearForWeekOfYear;

    bool operator==(const DateComponents&) const = default;
};

/// Components asked for in a decomposition; combine with |.
enum Component : std::uint32_t {
    kEra = 1u << 0,
    kYear = 1u << 1,
    kMonth = 1u << 2,
    kDay = 1u << 3,
    kHour = 1u << 4,
    kMinute = 1u << 5,
    kSecond = 1u << 6,
    kWeekday = 1u << 7,
    kWeekdayOrdinal = 1u << 8,
    kWeekOfMonth = 1u << 9,
    kWeekOfYear = 1u << 10,
    kYearForWeekOfYear = 1u << 11,
};
using ComponentSet = std::uint32_t;

/// A change of a time zone's offset from UTC.
struct ZoneTransition {
    double utcMillis = 0;          ///< the moment of the change, in milliseconds since 1970
    std::int32_t offsetBefore = 0; ///< raw plus daylight offset before it, in milliseconds
    std::int32_t offsetAfter = 0;  ///< and from it on
};

/// The set used for today and for start dates by the occurrence lists:
/// year, month, weekOfMonth, weekday, day, hour, minute, weekOfYear.
inline constexpr ComponentSet kEngineComponents =
    kYear | kMonth | kWeekOfMonth | kWeekday | kDay | kHour | kMinute | kWeekOfYear;

/// What the device would say about time and place. Empty strings and absent values mean "the
/// system's": TZ / the system time zone, LC_ALL / LC_TIME / LANG, the locale's week rules and the
/// real clock.
struct CalendarEnvironment {
    std::string timeZoneId;                    ///< e.g. "Europe/Berlin"
    std::string localeId;                      ///< e.g. "en_US", "zh_CN", "de_DE"
    std::optional<int> firstWeekday;           ///< 1 Sunday ... 7 Saturday
    std::optional<int> minimumDaysInFirstWeek; ///< 1 ... 7
    std::optional<Date> fixedNow;              ///< a frozen clock
};

/// The environment every Calendar::current() and now() reads. Setting it is meant for start-up
/// (command-line options) and tests; it is safe to call from any thread.
void setCalendarEnvironment(CalendarEnvironment environment);
CalendarEnvironment calendarEnvironment();
/// A number that changes with every setCalendarEnvironment(), for those that keep what they
/// worked out under one environment.
std::uint64_t calendarEnvironmentGeneration();

/// Sets an environment for the lifetime of the object and restores the previous one after.
class ScopedCalendarEnvironment {
public:
    explicit ScopedCalendarEnvironment(CalendarEnvironment environment);
    ~ScopedCalendarEnvironment();
    ScopedCalendarEnvironment(const ScopedCalendarEnvironment&) = delete;
    ScopedCalendarEnvironment& operator=(const ScopedCalendarEnvironment&) = delete;

private:
    CalendarEnvironment previous_;
};

/// The current moment (the fixed one if the environment has one).
Date now();

/// The device's current calendar (Calendar.current): the locale's calendar system in the
/// environment's time zone, lenient, with the platform's rules for repeated and skipped wall
/// times and for year + weekOfYear + weekday. Not thread-safe: use one per thread
/// (Calendar::current() hands out a thread-local instance).
class Calendar {
public:
    /// The calendar of the current environment, for the calling thread. It follows changes of
    /// the environment.
    static Calendar& current();

    /// A calendar for an explicit environment (its fixedNow is ignored).
    explicit Calendar(const CalendarEnvironment& environment);
    ~Calendar();
    Calendar(Calendar&&) noexcept;
    Calendar& operator=(Calendar&&) noexcept;

    /// Lenient composition (Calendar.date(from:)): absent hour, minute and second are 0; months
    /// and days overflow into the following units; day 0 is the last day of the previous month;
    /// year + weekOfYear + weekday (without month and day) name the weekday in that week of
    /// that week-numbering year. No result for values that ICU can't hold.
    std::optional<Date> date(const DateComponents& components) const;

    /// Decomposition (Calendar.dateComponents(_:from:)) into the components of `set`.
    DateComponents dateComponents(ComponentSet set, Date date) const;

    int firstWeekday() const;           ///< 1 Sunday ... 7 Saturday
    int minimumDaysInFirstWeek() const; ///< 1 ... 7
    std::string timeZoneId() const;
    std::string localeId() const;

    /// The calendar system in use: "gregorian", "buddhist", "japanese", "iso8601", ...
    std::string calendarType() const;

    /// The changes of the time zone's offset after `from` (exclusive) up to `to` (inclusive), in
    /// order; changes that leave the total offset as it was are included. No result when the zone
    /// can't list its changes.
    std::optional<std::vector<ZoneTransition>> zoneTransitions(Date from, Date to) const;

    /// Formats with a fixed pattern ("yyyyMMddHHmmss", "yyyy-MM-dd / HH:mm", "yyyyMMdd", ...) in
    /// this calendar, time zone and locale, like a DateFormatter with `dateFormat` set.
    std::string format(Date date, std::string_view pattern) const;

    /// The date format style with year, abbreviated month and day in the user's locale
    /// ("Mar 10, 2026", "2026年3月10日"); without the year when `withYear` is false.
    std::string formatAbbreviated(Date date, bool withYear = true) const;

    /// Formats with the locale's best pattern for an ICU skeleton: "yMMMM" gives "March 2026" or
    /// "2026年3月", "MMMMEEEEd" gives "Tuesday, March 10" or "3月10日星期二". "" when ICU has no
    /// pattern for it.
    std::string formatSkeleton(Date date, std::string_view skeleton) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

/// A new random (version 4) UUID in upper-case textual form.
std::string newUUIDString();

} // namespace tidemark
