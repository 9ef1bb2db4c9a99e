// The calendar layer on ICU: one global environment (zone, locale, week rules, clock), a
// per-thread Calendar that follows it, lenient composition and decomposition, fixed-pattern
// formatting and random UUIDs.
#include "calendar/Calendar.h"

#include "base/Fatal.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <mutex>
#include <random>
#include <sys/random.h>
#include <unicode/basictz.h>
#include <unicode/calendar.h>
#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/tzrule.h>
#include <unicode/tztrans.h>
#include <unicode/unistr.h>
#include <utility>
#include <vector>

namespace tidemark {

// ---------------------------------------------------------------------------------------------
// The environment

namespace {

struct EnvironmentState {
    std::mutex mutex;
    CalendarEnvironment environment;
    // Bumped under the mutex on every change; 0 is never a valid generation, so a fresh
    // per-thread cache always refreshes on first use.
    std::atomic<std::uint64_t> generation{1};
};

EnvironmentState& environmentState() {
    static EnvironmentState state;
    return state;
}

/// A consistent copy of the environment and the generation it belongs to.
std::pair<CalendarEnvironment, std::uint64_t> environmentSnapshot() {
    auto& state = environmentState();
    std::lock_guard lock(state.mutex);
    return {state.environment, state.generation.load(std::memory_order_relaxed)};
}

} // namespace

void setCalendarEnvironment(CalendarEnvironment environment) {
    auto& state = environmentState();
    std::lock_guard lock(state.mutex);
    state.environment = std::move(environment);
    state.generation.fetch_add(1, std::memory_order_release);
}

CalendarEnvironment calendarEnvironment() {
    return environmentSnapshot().first;
}

std::uint64_t calendarEnvironmentGeneration() {
    return environmentState().generation.load(std::memory_order_acquire);
}

ScopedCalendarEnvironment::ScopedCalendarEnvironment(CalendarEnvironment environment)
    : previous_(calendarEnvironment()) {
    setCalendarEnvironment(std::move(environment));
}

ScopedCalendarEnvironment::~ScopedCalendarEnvironment() {
    setCalendarEnvironment(std::move(previous_));
}

Date now() {
    // The fixed clock is cached per thread and refreshed only when the environment changed, so
    // that asking for "now" in a loop takes no lock.
    thread_local std::uint64_t seenGeneration = 0;
    thread_local std::optional<Date> fixedNow;
    const auto generation = environmentState().generation.load(std::memory_order_acquire);
    if (generation != seenGeneration) {
        auto [environment, current] = environmentSnapshot();
        fixedNow = environment.fixedNow;
        seenGeneration = current;
    }
    if (fixedNow) {
        return *fixedNow;
    }
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date{std::chrono::duration<double>(sinceEpoch).count()};
}

double Date::timeIntervalSinceNow() const {
    return timeIntervalSince(now());
}

// ---------------------------------------------------------------------------------------------
// Calendar

namespace {

constexpr double kMillisPerSecond = 1000.0;

// Composition refuses inputs whose rough extent exceeds this many days (about 2.7 million
// years). ICU 72 adds day numbers in 32-bit integers without overflow checks; keeping every
// partial sum well inside that range keeps composition exact and free of overflow.
constexpr double kMaximumDaySpan = 1.0e9;

std::string toUtf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

/// The locale named by the POSIX environment for dates (LC_ALL, LC_TIME, LANG), else ICU's
/// default. "de_DE.UTF-8@euro" is read as "de_DE"; "C" and "POSIX" as en_US_POSIX.
icu::Locale systemLocale() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == '\0') {
            continue;
        }
        std::string name(value);
        name = name.substr(0, name.find_first_of(".@"));
        if (name.empty() || name == "C" || name == "POSIX") {
            return icu::Locale("en_US_POSIX");
        }
        icu::Locale locale(name.c_str());
        if (!locale.isBogus()) {
            return locale;
        }
    }
    return icu::Locale::getDefault();
}

bool fitsInt32(std::int64_t value) {
    return value >= std::numeric_limits<std::int32_t>::min() &&
           value <= std::numeric_limits<std::int32_t>::max();
}

/// The rough number of days that the components span, for the overflow guard.
double daySpan(const DateComponents& c) {
    auto days = [](const std::optional<std::int64_t>& value, double daysPerUnit) {
        return value ? std::fabs(static_cast<double>(*value)) * daysPerUnit : 0.0;
    };
    return days(c.era, 366.0) + days(c.year, 366.0) + days(c.yearForWeekOfYear, 366.0) +
           days(c.month, 31.0) + days(c.day, 1.0) + days(c.weekOfYear, 7.0) +
           days(c.weekOfMonth, 7.0) + days(c.weekdayOrdinal, 7.0) + days(c.weekday, 1.0) +
           days(c.hour, 1.0 / 24) + days(c.minute, 1.0 / 1440) + days(c.second, 1.0 / 86400);
}

bool componentsFitIcu(const DateComponents& c) {
    for (const auto* value :
         {&c.era, &c.year, &c.month, &c.day, &c.hour, &c.minute, &c.second, &c.weekday,
          &c.weekdayOrdinal, &c.weekOfMonth, &c.weekOfYear, &c.yearForWeekOfYear}) {
        if (*value && !fitsInt32(**value)) {
            return false;
        }
    }
    return daySpan(c) <= kMaximumDaySpan;
}

std::int32_t narrow(std::int64_t value) {
    return static_cast<std::int32_t>(value);
}

} // namespace

struct Calendar::Impl {
    icu::Locale locale;
    std::unique_ptr<icu::Calendar> calendar;
    std::string localeId;
    std::string timeZoneId;
    // Formatters are costly to build and formatting is frequent: one per pattern, made on
    // first use. A handful of patterns is used, so a linear search beats hashing.
    std::vector<std::pair<std::string, std::unique_ptr<icu::SimpleDateFormat>>> formatters;
    // The same for the locale's best patterns, by skeleton.
    std::vector<std::pair<std::string, std::unique_ptr<icu::SimpleDateFormat>>> skeletons;

    std::unique_ptr<icu::SimpleDateFormat> makeFormatter(const icu::UnicodeString& pattern) {
        UErrorCode status = U_ZERO_ERROR;
        auto formatter = std::make_unique<icu::SimpleDateFormat>(pattern, locale, status);
        if (U_FAILURE(status)) {
            // A pattern that ICU refuses formats as nothing rather than as something made up.
            return nullptr;
        }
        formatter->setCalendar(*calendar);
        return formatter;
    }

    std::string formatWith(icu::SimpleDateFormat* formatter, Date date) {
        if (formatter == nullptr || !std::isfinite(date.secondsSince1970)) {
            return {};
        }
        icu::UnicodeString text;
        formatter->format(date.secondsSince1970 * kMillisPerSecond, text);
        return toUtf8(text);
    }
};

Calendar& Calendar::current() {
    struct Slot {
        std::uint64_t generation = 0;
        std::optional<Calendar> calendar;
    };
    thread_local Slot slot;
    const auto generation = environmentState().generation.load(std::memory_order_acquire);
    if (!slot.calendar || slot.generation != generation) {
        auto [environment, current] = environmentSnapshot();
        if (slot.calendar) {
            // Assign in place so that references handed out earlier stay valid.
            *slot.calendar = Calendar(environment);
        } else {
            slot.calendar.emplace(environment);
        }
        slot.generation = current;
    }
    return *slot.calendar;
}

Calendar::Calendar(const CalendarEnvironment& environment) : impl_(std::make_unique<Impl>()) {
    impl_->locale =
        environment.localeId.empty() ? systemLocale() : icu::Locale(environment.localeId.c_str());
    icu::TimeZone* zone =
        environment.timeZoneId.empty()
            ? icu::TimeZone::createDefault()
            : icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(environment.timeZoneId));
    UErrorCode status = U_ZERO_ERROR;
    impl_->calendar.reset(icu::Calendar::createInstance(zone, impl_->locale, status));
    if (U_FAILURE(status) || !impl_->calendar) {
        fatalStop(std::string("Can't create a calendar: ") + u_errorName(status));
    }
    auto& calendar = *impl_->calendar;
    calendar.setLenient(true);
    calendar.setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    calendar.setSkippedWallTimeOption(UCAL_WALLTIME_LAST);
    if (environment.firstWeekday && *environment.firstWeekday >= 1 &&
        *environment.firstWeekday <= 7) {
        calendar.setFirstDayOfWeek(static_cast<UCalendarDaysOfWeek>(*environment.firstWeekday));
    }
    if (environment.minimumDaysInFirstWeek && *environment.minimumDaysInFirstWeek >= 1 &&
        *environment.minimumDaysInFirstWeek <= 7) {
        calendar.setMinimalDaysInFirstWeek(
            static_cast<std::uint8_t>(*environment.minimumDaysInFirstWeek));
    }
    impl_->localeId = impl_->locale.getName();
    icu::UnicodeString zoneId;
    impl_->timeZoneId = toUtf8(calendar.getTimeZone().getID(zoneId));
}

Calendar::~Calendar() = default;
Calendar::Calendar(Calendar&&) noexcept = default;
Calendar& Calendar::operator=(Calendar&&) noexcept = default;

std::optional<Date> Calendar::date(const DateComponents& c) const {
    if (!componentsFitIcu(c)) {
        return std::nullopt;
    }
    auto& calendar = *impl_->calendar;
    if (c.era) {
        // Some calendars look eras up in tables without a range check of their own.
        if (*c.era < calendar.getMinimum(UCAL_ERA) || *c.era > calendar.getMaximum(UCAL_ERA)) {
            return std::nullopt;
        }
    }
    calendar.clear();
    if (c.era) {
        calendar.set(UCAL_ERA, narrow(*c.era));
    }
    if (c.month || c.day) {
        if (c.year) {
            calendar.set(UCAL_YEAR, narrow(*c.year));
        }
        if (c.month) {
            calendar.set(UCAL_MONTH, narrow(*c.month - 1));
        }
        if (c.day) {
            calendar.set(UCAL_DATE, narrow(*c.day));
        } else if (c.weekdayOrdinal && c.weekday) {
            calendar.set(UCAL_DAY_OF_WEEK, narrow(*c.weekday));
            calendar.set(UCAL_DAY_OF_WEEK_IN_MONTH, narrow(*c.weekdayOrdinal));
        } else if (c.weekOfMonth) {
            if (c.weekday) {
                calendar.set(UCAL_DAY_OF_WEEK, narrow(*c.weekday));
            }
            calendar.set(UCAL_WEEK_OF_MONTH, narrow(*c.weekOfMonth));
        }
    } else if (c.weekOfYear) {
        // The year is the year of the week numbering; ICU's plain YEAR would instead move week 1
        // into the following calendar year when that year's first week starts in December.
        if (const auto& year = c.yearForWeekOfYear ? c.yearForWeekOfYear : c.year) {
            calendar.set(UCAL_YEAR_WOY, narrow(*year));
        }
        if (c.weekday) {
            calendar.set(UCAL_DAY_OF_WEEK, narrow(*c.weekday));
        }
        calendar.set(UCAL_WEEK_OF_YEAR, narrow(*c.weekOfYear));
    } else if (c.year) {
        calendar.set(UCAL_YEAR, narrow(*c.year));
    }
    calendar.set(UCAL_HOUR_OF_DAY, c.hour ? narrow(*c.hour) : 0);
    calendar.set(UCAL_MINUTE, c.minute ? narrow(*c.minute) : 0);
    calendar.set(UCAL_SECOND, c.second ? narrow(*c.second) : 0);

    UErrorCode status = U_ZERO_ERROR;
    const UDate millis = calendar.getTime(status);
    if (U_FAILURE(status) || !std::isfinite(millis)) {
        return std::nullopt;
    }
    return Date{millis / kMillisPerSecond};
}

DateComponents Calendar::dateComponents(ComponentSet set, Date date) const {
    DateComponents result;
    if (std::isnan(date.secondsSince1970)) {
        return result;
    }
    auto& calendar = *impl_->calendar;
    UErrorCode status = U_ZERO_ERROR;
    // Lenient ICU clamps moments beyond its range to the range's ends.
    calendar.setTime(date.secondsSince1970 * kMillisPerSecond, status);
    auto field = [&](Component component, std::optional<std::int64_t>& slot,
                     UCalendarDateFields icuField, std::int64_t offset = 0) {
        if ((set & component) != 0) {
            const std::int32_t value = calendar.get(icuField, status);
            if (U_SUCCESS(status)) {
                slot = static_cast<std::int64_t>(value) + offset;
            }
        }
    };
    field(kEra, result.era, UCAL_ERA);
    field(kYear, result.year, UCAL_YEAR);
    field(kMonth, result.month, UCAL_MONTH, 1);
    field(kDay, result.day, UCAL_DATE);
    field(kHour, result.hour, UCAL_HOUR_OF_DAY);
    field(kMinute, result.minute, UCAL_MINUTE);
    field(kSecond, result.second, UCAL_SECOND);
    field(kWeekday, result.weekday, UCAL_DAY_OF_WEEK);
    field(kWeekdayOrdinal, result.weekdayOrdinal, UCAL_DAY_OF_WEEK_IN_MONTH);
    field(kWeekOfMonth, result.weekOfMonth, UCAL_WEEK_OF_MONTH);
    field(kWeekOfYear, result.weekOfYear, UCAL_WEEK_OF_YEAR);
    field(kYearForWeekOfYear, result.yearForWeekOfYear, UCAL_YEAR_WOY);
    return result;
}

int Calendar::firstWeekday() const {
    UErrorCode status = U_ZERO_ERROR;
    const int weekday = impl_->calendar->getFirstDayOfWeek(status);
    return U_SUCCESS(status) ? weekday : 1;
}

int Calendar::minimumDaysInFirstWeek() const {
    return impl_->calendar->getMinimalDaysInFirstWeek();
}

std::string Calendar::timeZoneId() const {
    return impl_->timeZoneId;
}

std::string Calendar::localeId() const {
    return impl_->localeId;
}

std::string Calendar::calendarType() const {
    const char* type = impl_->calendar->getType();
    return type != nullptr ? std::string(type) : std::string();
}

std::optional<std::vector<ZoneTransition>> Calendar::zoneTransitions(Date from, Date to) const {
    const auto* zone = dynamic_cast<const icu::BasicTimeZone*>(&impl_->calendar->getTimeZone());
    if (zone == nullptr || !std::isfinite(from.secondsSince1970) ||
        !std::isfinite(to.secondsSince1970)) {
        return std::nullopt;
    }
    std::vector<ZoneTransition> result;
    UDate base = from.secondsSince1970 * kMillisPerSecond;
    const UDate end = to.secondsSince1970 * kMillisPerSecond;
    icu::TimeZoneTransition transition;
    while (zone->getNextTransition(base, false, transition)) {
        const UDate at = transition.getTime();
        if (at > end || !(at > base)) {
            break;
        }
        const icu::TimeZoneRule* before = transition.getFrom();
        const icu::TimeZoneRule* after = transition.getTo();
        if (before == nullptr || after == nullptr) {
            return std::nullopt;
        }
        result.push_back(ZoneTransition{at, before->getRawOffset() + before->getDSTSavings(),
                                        after->getRawOffset() + after->getDSTSavings()});
        base = at;
    }
    return result;
}

std::string Calendar::format(Date date, std::string_view pattern) const {
    auto& formatters = impl_->formatters;
    for (auto& [key, formatter] : formatters) {
        if (key == pattern) {
            return impl_->formatWith(formatter.get(), date);
        }
    }
    const auto icuPattern =
        icu::UnicodeString::fromUTF8(icu::StringPiece(pattern.data(), narrow(pattern.size())));
    formatters.emplace_back(std::string(pattern), impl_->makeFormatter(icuPattern));
    return impl_->formatWith(formatters.back().second.get(), date);
}

std::string Calendar::formatAbbreviated(Date date, bool withYear) const {
    return formatSkeleton(date, withYear ? "yMMMd" : "MMMd");
}

std::string Calendar::formatSkeleton(Date date, std::string_view skeleton) const {
    auto found = std::find_if(impl_->skeletons.begin(), impl_->skeletons.end(),
                              [&](const auto& entry) { return entry.first == skeleton; });
    if (found == impl_->skeletons.end()) {
        std::unique_ptr<icu::SimpleDateFormat> formatter;
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::DateTimePatternGenerator> generator(
            icu::DateTimePatternGenerator::createInstance(impl_->locale, status));
        if (U_SUCCESS(status)) {
            const auto pattern = generator->getBestPattern(
                icu::UnicodeString::fromUTF8(
                    icu::StringPiece(skeleton.data(), static_cast<int32_t>(skeleton.size()))),
                status);
            if (U_SUCCESS(status)) {
                formatter = impl_->makeFormatter(pattern);
            }
        }
        impl_->skeletons.emplace_back(std::string(skeleton), std::move(formatter));
        found = std::prev(impl_->skeletons.end());
    }
    return impl_->formatWith(found->second.get(), date);
}

// ---------------------------------------------------------------------------------------------
// UUIDs

namespace {

void fillRandom(unsigned char* bytes, std::size_t count) {
    std::size_t filled = 0;
    while (filled < count) {
        const ssize_t got = getrandom(bytes + filled, count - filled, 0);
        if (got > 0) {
            filled += static_cast<std::size_t>(got);
        } else if (got < 0 && errno != EINTR) {
            break;
        }
    }
    if (filled < count) {
        // No kernel source available (very old kernel or a sandbox): the library's device.
        std::random_device device;
        for (; filled < count; ++filled) {
            bytes[filled] = static_cast<unsigned char>(device());
        }
    }
}

} // namespace

std::string newUUIDString() {
    std::array<unsigned char, 16> bytes{};
    fillRandom(bytes.data(), bytes.size());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40); // version 4
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80); // RFC 4122 variant
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            text.push_back('-');
        }
        text.push_back(kHex[bytes[i] >> 4]);
        text.push_back(kHex[bytes[i] & 0x0F]);
    }
    return text;
}

} // namespace tidemark
