#include "engine/RuleBatch.h"

#include "base/Fatal.h"
#include "engine/CanonicalDayList.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tidemark {

namespace {

enum class Kind : std::uint8_t {
    Walk,    ///< answered by the walks of Occurrences.h
    Nothing, ///< an eventType without a rule: never on a day, no list
    OneOff,
    Daily,
    Weekly,
    Monthly,
    Yearly,
};

/// The most codes a compiled weekly or monthly list holds inline (every distinct code); a longer
/// list, which repeats codes, is left to the walks.
constexpr std::size_t kMaxWeekCodes = 7;
constexpr std::size_t kMaxMonthCodes = 32;

/// One event, compiled: what its questions need, as day numbers and moments. It holds no memory
/// of its own, so that a batch of thousands is made and dropped without allocations.
struct Rule {
    Kind kind = Kind::Walk;
    bool hasEnd = false;
    bool customised = false;
    std::int64_t step = 1;      ///< the walk's step in its own unit
    std::int64_t timeOfDay = 0; ///< the daily time, ms after midnight
    std::int64_t startDay = 0;  ///< local day number of the start date
    double startDate = 0;       ///< its midnight
    std::int64_t endDay = 0;    ///< local day number of the end date
    double endDate = 0;         ///< its midnight
    std::uint8_t codeCount = 0;
    std::array<std::int64_t, kMaxWeekCodes> firstDayList{}; ///< weekly: see firstDays()
    std::array<std::int8_t, kMaxMonthCodes> codeList{};     ///< monthly: see codes()
    std::uint32_t landing = 0;                              ///< monthly: see lands()
    std::int64_t firstMonth = 0; ///< monthly: year * 12 + month - 1 where the walk starts
    bool plainYearly = false;    ///< yearly: start month 1 to 12 and day 1 to 31
    std::int64_t firstYear = 0;  ///< yearly: the year of the first pass's composed date

    /// Weekly: each code's day in the start week.
    std::span<const std::int64_t> firstDays() const { return {firstDayList.data(), codeCount}; }
    /// Monthly: the month-day codes.
    std::span<const std::int8_t> codes() const { return {codeList.data(), codeCount}; }
    /// Monthly: whether code i ever finds a month.
    bool lands(std::size_t i) const { return ((landing >> i) & 1) != 0; }
};

/// The ranges inside which the arithmetic below is known to match the calendar; anything else
/// is left to the walks.
constexpr std::int64_t kMaxYear = 100'000;
constexpr std::int64_t kMaxMonth = 1'000;
constexpr std::int64_t kMaxDay = 10'000;
constexpr std::int64_t kMaxSkippedUnits = 999;

bool saneDate(std::int64_t year, std::int64_t month, std::int64_t day) {
    static const std::int64_t kFirstDay = daysFromCivil(LocalClock::kFirstYear, 1, 1);
    return year >= LocalClock::kFirstYear && year <= kMaxYear && month >= -kMaxMonth &&
           month <= kMaxMonth && day >= -kMaxDay && day <= kMaxDay &&
           daysFromCivil(year, month, day) >= kFirstDay;
}

bool saneTime(std::int64_t hour, std::int64_t minute) {
    return hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59;
}

/// Whether a month-day code of 29, 30 or 31 ever finds a month long enough when the walk
/// starts at month number `first` and moves by `step` months. The months visited and their
/// leap years repeat within 4,800 passes.
bool codeLands(std::int64_t first, std::int64_t step, std::int64_t code) {
    if (code < 29 || code > 31) {
        return true;
    }
    for (std::int64_t k = 0; k < 4800; ++k) {
        const std::int64_t n = first + k * step;
        if (daysInMonth(floorDiv(n, 12), floorMod(n, 12) + 1) >= code) {
            return true;
        }
    }
    return false;
}

std::int64_t ceilDiv(std::int64_t a, std::int64_t b) {
    return -floorDiv(-a, b);
}

/// Whether a walk from `firstDay` in steps of `stepDays` has a pass on `day`.
bool passOn(std::int64_t day, std::int64_t firstDay, std::int64_t stepDays) {
    return day >= firstDay && (stepDays == 1 || (day - firstDay) % stepDays == 0);
}

/// The day asked about, once per question.
struct DayKey {
    Date date;
    Date dayStart;
    bool fast = false;
    std::int64_t day = 0;   ///< local day number
    std::int64_t month = 0; ///< year * 12 + month - 1
    std::int64_t year = 0;
    /// Whether one offset holds from three days before the day to three days after it.
    bool steady = false;
    std::int64_t offset = 0;
    /// Steady with an offset of whole seconds, and the day's midnight the clock's: a pass of a
    /// daily or weekly walk (at a time within its day) then matches the day exactly when it is
    /// a pass of the day itself (see indicesOnDates).
    bool passOfTheDayOnly = false;
    /// First day and length of the months from two before the day's month to one after it.
    std::int64_t monthStart[4] = {};
    std::int64_t monthLength[4] = {};
    /// First day of each month of the year before the day's year, that year and the next.
    std::int64_t yearMonthStart[3][12] = {};
};

/// The clock reading of a list question.
struct Today {
    Date now;
    bool fast = false;
    std::int64_t year = 0, month = 0, day = 0;
};

/// What a pass of a day walk decides: the day is matched, the walk has passed the day (missed),
/// or it goes on.
enum class Window { Matched, Missed, Next };

/// The day lists read so far in this process, by their bytes. Reading an archive costs far more
/// than looking it up, and the lists of a store are few and rarely change, so every batch after
/// the first (the month after a save, the next plan) finds nearly all of them here. The same
/// bytes always read the same way, so the kept answers never go stale.
class DecodedLists {
public:
    static DecodedLists& shared() {
        static DecodedLists lists;
        return lists;
    }

    std::shared_ptr<const DayListReadResult> find(std::string_view bytes) {
        const std::lock_guard lock(mutex_);
        const auto found = lists_.find(bytes);
        return found != lists_.end() ? found->second : nullptr;
    }

    void add(std::string_view bytes, std::shared_ptr<const DayListReadResult> result) {
        const std::lock_guard lock(mutex_);
        if (lists_.size() >= kMaxLists) {
            lists_.clear(); // batches hold what they use
        }
        lists_.emplace(std::string(bytes), std::move(result));
    }

private:
    static constexpr std::size_t kMaxLists = 1 << 15;
    /// A word at a time: the archives are a few hundred bytes, and every list of every batch is
    /// looked up.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            constexpr std::uint64_t kMultiplier = 0x9E37'79B9'7F4A'7C15u;
            std::uint64_t hash = text.size() * kMultiplier;
            std::size_t i = 0;
            for (; i + 8 <= text.size(); i += 8) {
                std::uint64_t word = 0;
                std::memcpy(&word, text.data() + i, 8);
                hash = (std::rotl(hash, 23) ^ word) * kMultiplier;
            }
            for (; i < text.size(); ++i) {
                hash = (std::rotl(hash, 23) ^ static_cast<unsigned char>(text[i])) * kMultiplier;
            }
            return static_cast<std::size_t>(hash ^ (hash >> 29));
        }
    };
    std::mutex mutex_;
    std::unordered_map<std::string, std::shared_ptr<const DayListReadResult>, Hash, std::equal_to<>>
        lists_;
};

std::string_view bytesOf(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

struct RuleBatch::State {
    explicit State(const Calendar& calendar) : clock(calendar) {}

    LocalClock clock;
    std::vector<std::optional<Rule>> rules;
    /// The most events a day of a run held so far.
    std::size_t cellCapacity = 0;
    /// The list of these bytes, read once per process; it stays alive while the caller holds it.
    static std::shared_ptr<const DayListReadResult> decoded(const Bytes& bytes) {
        const std::string_view key = bytesOf(bytes);
        std::shared_ptr<const DayListReadResult> result = DecodedLists::shared().find(key);
        if (result == nullptr) {
            auto read = std::make_shared<DayListReadResult>();
            if (auto values = readCanonicalDayList(bytes)) {
                read->values = std::move(*values);
            } else {
                *read = readDayListArchive(bytes);
            }
            result = std::move(read);
            DecodedLists::shared().add(key, result);
        }
        return result;
    }

    Rule compile(const EventFields& event);
    DayKey dayKey(Date date, const Calendar& calendar) const;
    bool happens(const EventFields& event, const Rule& rule, const DayKey& key) const;
    /// The walk's two tests on the occurrence at `timeOfDay` of local day `day`.
    Window judge(const DayKey& key, std::int64_t day, std::int64_t timeOfDay) const {
        double seconds = 0;
        if (key.steady && day >= key.day - 3 && day <= key.day + 3) {
            // The clock's own formula, with the offset that holds around the day.
            seconds = static_cast<double>(day * kMillisPerDay + timeOfDay - key.offset) / 1000.0;
        } else {
            seconds = clock.moment(day, timeOfDay).secondsSince1970;
        }
        const double x = key.dayStart.secondsSince1970 - seconds;
        if (x > kOverInterval && x <= 0) {
            return Window::Matched;
        }
        return x >= kOverInterval ? Window::Next : Window::Missed;
    }
    Window window(std::int64_t firstDay, std::int64_t stepDays, std::int64_t timeOfDay,
                  const DayKey& key) const;
    Window monthWindow(const Rule& rule, std::int64_t code, const DayKey& key) const;
    /// monthWindow on a day whose passes match it only on the day itself.
    bool monthPassOn(const Rule& rule, std::int64_t code, const DayKey& key) const;
    Window yearWindow(const EventFields& event, const Rule& rule, const DayKey& key) const;
    Today today(Date now, const Calendar& calendar) const;
    bool list(const EventFields& event, const Rule& rule, const Today& today,
              std::vector<DateComponents>* elements, std::vector<Date>& dates) const;
};

Rule RuleBatch::State::compile(const EventFields& event) {
    Rule rule;
    if (event.eventType < 0 || event.eventType > 4) {
        rule.kind = Kind::Nothing;
        return rule;
    }
    if (!clock.usable() ||
        !saneDate(event.eventStartDateYear, event.eventStartDateMonth, event.eventStartDateDay)) {
        return rule;
    }
    rule.hasEnd = event.eventHaveEndDateOrNot;
    if (rule.hasEnd &&
        !saneDate(event.eventEndDateYear, event.eventEndDateMonth, event.eventEndDateDay)) {
        return rule;
    }
    // The daily time is read by the daily rule and by the end cut of every list.
    if (saneTime(event.eventDateWhenEveryDayHour, event.eventDateWhenEveryDayMin)) {
        rule.timeOfDay = event.eventDateWhenEveryDayHour * kMillisPerHour +
                         event.eventDateWhenEveryDayMin * kMillisPerMinute;
    } else if (repeatTypeOf(event) == RepeatType::daily || rule.hasEnd) {
        return rule;
    }
    rule.customised = event.eventHaveCustomizeInterval;
    if (rule.customised) {
        const std::int64_t times = event.eventDateWhenCustomizeRepeatTimes;
        if (times < 0 || times > kMaxSkippedUnits) {
            return rule;
        }
        rule.step = times + 1;
    }
    rule.startDay =
        daysFromCivil(event.eventStartDateYear, event.eventStartDateMonth, event.eventStartDateDay);
    rule.startDate = clock.moment(rule.startDay, 0).secondsSince1970;
    if (rule.hasEnd) {
        rule.endDay =
            daysFromCivil(event.eventEndDateYear, event.eventEndDateMonth, event.eventEndDateDay);
        rule.endDate = clock.moment(rule.endDay, 0).secondsSince1970;
    }

    switch (repeatTypeOf(event)) {
    case RepeatType::none:
        rule.kind = Kind::OneOff;
        break;
    case RepeatType::daily:
        rule.kind = Kind::Daily;
        break;
    case RepeatType::yearly:
        rule.kind = Kind::Yearly;
        rule.plainYearly = event.eventStartDateMonth >= 1 && event.eventStartDateMonth <= 12 &&
                           event.eventStartDateDay >= 1 && event.eventStartDateDay <= 31;
        rule.firstYear = civilFromDays(rule.startDay).year;
        break;
    case RepeatType::weekly: {
        const auto list = decoded(event.eventDateWhenEveryWeek);
        const DayListReadResult& codes = *list;
        if (codes.error) {
            return rule; // the walk stops the program at the moment it reads them
        }
        if (codes.values.size() > kMaxWeekCodes) {
            return rule;
        }
        for (const std::int64_t code : codes.values) {
            if (code < 1 || code > 7) {
                return rule;
            }
        }
        // The start's calendar year with the week number of the start: near the turn of the
        // year that names a week of another year, as the walk does.
        const std::int64_t startWeek = clock.weekRules().weekOfYear(rule.startDay);
        for (const std::int64_t code : codes.values) {
            rule.firstDayList[rule.codeCount++] = clock.weekRules().dayOfWeek(
                event.eventStartDateYear, startWeek, calendarWeekday(code));
        }
        rule.kind = Kind::Weekly;
        break;
    }
    case RepeatType::monthly: {
        const auto list = decoded(event.eventDateWhenEveryMonth);
        const DayListReadResult& codes = *list;
        if (codes.error) {
            return rule;
        }
        if (codes.values.size() > kMaxMonthCodes) {
            return rule;
        }
        for (const std::int64_t code : codes.values) {
            if ((code < 1 || code > 31) && code != kLastDayOfMonthCode) {
                return rule;
            }
        }
        // The walk runs in the start's stored year from the month of the composed start date.
        rule.firstMonth = event.eventStartDateYear * 12 + (civilFromDays(rule.startDay).month - 1);
        for (const std::int64_t code : codes.values) {
            if (codeLands(rule.firstMonth, rule.step, code)) {
                rule.landing |= std::uint32_t{1} << rule.codeCount;
            }
            rule.codeList[rule.codeCount++] = static_cast<std::int8_t>(code);
        }
        rule.kind = Kind::Monthly;
        break;
    }
    default:
        break;
    }
    return rule;
}

DayKey RuleBatch::State::dayKey(Date date, const Calendar& calendar) const {
    DayKey key;
    key.date = date;
    key.dayStart = dayStartOf(date, calendar);
    if (!clock.usable()) {
        return key;
    }
    const DateComponents parts = calendar.dateComponents(kYear | kMonth | kDay, date);
    if (!parts.year || !parts.month || !parts.day || *parts.year < LocalClock::kFirstYear ||
        *parts.year > kMaxYear) {
        return key;
    }
    key.year = *parts.year;
    key.month = *parts.year * 12 + *parts.month - 1;
    key.day = daysFromCivil(*parts.year, *parts.month, *parts.day);
    key.fast = clock.moment(key.day, 0) == key.dayStart && clock.consistent();
    if (const auto offset = clock.steadyOffset(key.day - 3, key.day + 4)) {
        key.steady = true;
        key.offset = *offset;
    }
    for (std::int64_t j = 0; j < 4; ++j) {
        const std::int64_t n = key.month - 2 + j;
        key.monthStart[j] = daysFromCivil(floorDiv(n, 12), floorMod(n, 12) + 1, 1);
        key.monthLength[j] = daysInMonth(floorDiv(n, 12), floorMod(n, 12) + 1);
    }
    for (std::int64_t j = 0; j < 3; ++j) {
        for (std::int64_t m = 0; m < 12; ++m) {
            key.yearMonthStart[j][m] = daysFromCivil(key.year - 1 + j, m + 1, 1);
        }
    }
    key.fast = key.fast && clock.consistent();
    key.passOfTheDayOnly = key.fast && key.steady && key.offset % 1000 == 0;
    return key;
}

// The walks go forward from the start; the occurrences they compose grow with every pass, and
// only those within two days of the day asked about can decide: earlier ones lie more than a
// day before its midnight (the walk goes on), later ones more than a day after it (the walk
// ends). So each window below composes just those passes, with the walk's own two tests.

Window RuleBatch::State::window(std::int64_t firstDay, std::int64_t stepDays,
                                std::int64_t timeOfDay, const DayKey& key) const {
    const std::int64_t low = key.day - 2;
    const std::int64_t high = key.day + 2;
    std::int64_t day = firstDay;
    if (day < low) {
        // The common steps of a day and a week spelled out, so that they need no division.
        const std::int64_t behind = low - day;
        day += stepDays == 1   ? behind
               : stepDays == 7 ? ceilDiv(behind, 7) * 7
                               : ceilDiv(behind, stepDays) * stepDays;
    }
    for (; day <= high; day += stepDays) {
        const Window pass = judge(key, day, timeOfDay);
        if (pass != Window::Next) {
            return pass;
        }
    }
    return Window::Missed;
}

Window RuleBatch::State::monthWindow(const Rule& rule, std::int64_t code, const DayKey& key) const {
    // The passes of the months around the day's month, from the day's tables.
    for (std::int64_t j = 0; j < 4; ++j) {
        const std::int64_t n = key.month - 2 + j;
        if (n < rule.firstMonth || (rule.step != 1 && (n - rule.firstMonth) % rule.step != 0)) {
            continue;
        }
        const std::int64_t length = key.monthLength[j];
        std::int64_t day = code;
        if (code == kLastDayOfMonthCode) {
            day = length;
        } else if (code >= 29 && code <= 31 && length < code) {
            continue; // too short: the walk passes this month without a test
        }
        const Window pass = judge(key, key.monthStart[j] + day - 1, 0);
        if (pass != Window::Next) {
            return pass;
        }
    }
    return Window::Missed;
}

Window RuleBatch::State::yearWindow(const EventFields& event, const Rule& rule,
                                    const DayKey& key) const {
    if (rule.plainYearly) {
        // A date of the year itself: only the passes of the day's year and its neighbours can
        // come within two days of it.
        for (std::int64_t j = 0; j < 3; ++j) {
            const std::int64_t passed = key.year - 1 + j - event.eventStartDateYear;
            if (passed < 0 || (rule.step != 1 && passed % rule.step != 0)) {
                continue;
            }
            const std::int64_t day =
                key.yearMonthStart[j][event.eventStartDateMonth - 1] + event.eventStartDateDay - 1;
            if (day < key.day - 2) {
                continue;
            }
            if (day > key.day + 2) {
                return Window::Missed;
            }
            const Window pass = judge(key, day, 0);
            if (pass != Window::Next) {
                return pass;
            }
        }
        return Window::Missed;
    }
    const auto occurrenceDay = [&](std::int64_t k) {
        return daysFromCivil(event.eventStartDateYear + k * rule.step, event.eventStartDateMonth,
                             event.eventStartDateDay);
    };
    // The lenient month and day shift every pass's year by the same amount, give or take one.
    std::int64_t k = std::max<std::int64_t>(0, floorDiv(key.year - rule.firstYear, rule.step) - 2);
    for (;; ++k) {
        const std::int64_t day = occurrenceDay(k);
        if (day > key.day + 2) {
            return Window::Missed;
        }
        if (day < key.day - 2) {
            continue;
        }
        const Window pass = judge(key, day, 0);
        if (pass != Window::Next) {
            return pass;
        }
    }
}

bool RuleBatch::State::happens(const EventFields& event, const Rule& rule,
                               const DayKey& key) const {
    const double dayStart = key.dayStart.secondsSince1970;
    // The day must not lie before the start nor after the end date; without that no
    // occurrence matches, whatever the walk composes.
    const bool notAfterEnd = !rule.hasEnd || dayStart - rule.endDate <= 0;
    if (rule.kind == Kind::OneOff) {
        const double x = dayStart - rule.startDate;
        return x > kOverInterval && x <= 0 && notAfterEnd;
    }
    if (!(dayStart - rule.startDate >= 0) || !notAfterEnd) {
        return false;
    }
    switch (rule.kind) {
    case Kind::Daily:
        if (key.passOfTheDayOnly) {
            return passOn(key.day, rule.startDay, rule.step);
        }
        return window(rule.startDay, rule.step, rule.timeOfDay, key) == Window::Matched;
    case Kind::Weekly:
        for (const std::int64_t firstDay : rule.firstDays()) {
            if (key.passOfTheDayOnly ? passOn(key.day, firstDay, 7 * rule.step)
                                     : window(firstDay, 7 * rule.step, 0, key) == Window::Matched) {
                return true;
            }
        }
        return false;
    case Kind::Monthly:
        for (std::size_t i = 0; i < rule.codes().size(); ++i) {
            if (!rule.lands(i)) {
                // The walk gives up on a code that never finds a month, and with it the query.
                return false;
            }
            if (key.passOfTheDayOnly ? monthPassOn(rule, rule.codes()[i], key)
                                     : monthWindow(rule, rule.codes()[i], key) == Window::Matched) {
                return true;
            }
        }
        return false;
    case Kind::Yearly:
        if (key.passOfTheDayOnly && rule.plainYearly) {
            for (std::int64_t j = 0; j < 3; ++j) {
                const std::int64_t passed = key.year - 1 + j - event.eventStartDateYear;
                if (passed >= 0 && (rule.step == 1 || passed % rule.step == 0) &&
                    key.yearMonthStart[j][event.eventStartDateMonth - 1] + event.eventStartDateDay -
                            1 ==
                        key.day) {
                    return true;
                }
            }
            return false;
        }
        return yearWindow(event, rule, key) == Window::Matched;
    default:
        return false;
    }
}

bool RuleBatch::State::monthPassOn(const Rule& rule, std::int64_t code, const DayKey& key) const {
    // The day's own month (index 2 of the day's tables): a code's pass stays in its month.
    const std::int64_t n = key.month;
    if (n < rule.firstMonth || (rule.step != 1 && (n - rule.firstMonth) % rule.step != 0)) {
        return false;
    }
    const std::int64_t length = key.monthLength[2];
    const std::int64_t dayOfMonth = key.day - key.monthStart[2] + 1;
    if (code == kLastDayOfMonthCode) {
        return dayOfMonth == length;
    }
    return code <= length && code == dayOfMonth;
}

Today RuleBatch::State::today(Date now, const Calendar& calendar) const {
    Today today;
    today.now = now;
    const DateComponents parts = calendar.dateComponents(kYear | kMonth | kDay, now);
    if (clock.usable() && parts.year && parts.month && parts.day &&
        *parts.year >= LocalClock::kFirstYear && *parts.year <= kMaxYear) {
        today.year = *parts.year;
        today.month = *parts.month;
        today.day = *parts.day;
        today.fast = true;
    }
    return today;
}

bool RuleBatch::State::list(const EventFields& event, const Rule& rule, const Today& today,
                            std::vector<DateComponents>* elements, std::vector<Date>& dates) const {
    const double now = today.now.secondsSince1970;
    const auto isOpen = [now](Date date) { return date.secondsSince1970 - now > kOverInterval; };
    const std::int64_t year = event.eventStartDateYear;
    const std::int64_t month = event.eventStartDateMonth;
    const std::int64_t day = event.eventStartDateDay;
    const std::int64_t hour = event.eventDateWhenEveryDayHour;
    const std::int64_t minute = event.eventDateWhenEveryDayMin;
    const std::int64_t times = event.eventDateWhenCustomizeRepeatTimes;
    const bool startOpen = rule.startDate - now > kOverInterval;
    // The list is appended to what `dates` holds already (the plan's earlier lists).
    const std::size_t base = dates.size();
    const auto count = [&] { return static_cast<std::int64_t>(dates.size() - base); };
    // Appends one element; its components are made only when the caller wants them.
    const auto keep = [&](Date date, const auto& element) {
        if (elements != nullptr) {
            elements->push_back(element());
        }
        dates.push_back(date);
    };

    switch (rule.kind) {
    case Kind::Nothing:
        return true;
    case Kind::Daily: {
        const double startMoment = clock.moment(rule.startDay, rule.timeOfDay).secondsSince1970;
        if (!rule.customised) {
            if (startMoment - now > 0) {
                for (std::int64_t i = 0; i <= 99; ++i) {
                    keep(clock.moment(rule.startDay + i, rule.timeOfDay),
                         [&] { return momentComponents(year, month, day + i, hour, minute); });
                }
                break;
            }
            const std::int64_t todayDay = daysFromCivil(today.year, today.month, today.day);
            const double todayMoment = clock.moment(todayDay, rule.timeOfDay).secondsSince1970;
            for (std::int64_t i = todayMoment - now > 0 ? 0 : 1; i <= 99; ++i) {
                keep(clock.moment(todayDay + i, rule.timeOfDay), [&] {
                    return momentComponents(today.year, today.month, today.day + i, hour, minute);
                });
            }
            break;
        }
        const double interval = startMoment - now;
        if (interval > 0) {
            for (std::int64_t i = 0; i <= 99; ++i) {
                keep(clock.moment(rule.startDay + i * rule.step, rule.timeOfDay), [&] {
                    return momentComponents(year, month, day + i * rule.step, hour, minute);
                });
            }
            break;
        }
        const std::int64_t daysPassed = -truncatingToInt(interval / 60 / 60 / 24);
        for (std::int64_t i = 1; i <= 99; ++i) {
            const std::int64_t k = daysPassed / rule.step + i;
            keep(clock.moment(rule.startDay + k * rule.step, rule.timeOfDay),
                 [&] { return momentComponents(year, month, day + k * rule.step, hour, minute); });
        }
        break;
    }
    case Kind::Weekly: {
        const std::int64_t unit = rule.customised ? rule.step * 7 : 7;
        for (const std::int64_t firstDay : rule.firstDays()) {
            const CivilDate first = civilFromDays(firstDay);
            if (startOpen) {
                for (std::int64_t i = 0; i <= 19; ++i) {
                    const Date date = clock.moment(firstDay + i * unit, 0);
                    if (isOpen(date) && date.secondsSince1970 - rule.startDate > kOverInterval) {
                        keep(date, [&] {
                            return dayComponents(first.year, first.month, first.day + i * unit);
                        });
                    }
                }
                continue;
            }
            const double sinceNow = clock.moment(firstDay, 0).secondsSince1970 - now;
            const std::int64_t weeksPassed = -truncatingToInt(sinceNow / 60 / 60 / 24 / 7);
            for (std::int64_t i = 0; i <= 19; ++i) {
                const std::int64_t offset = rule.customised
                                                ? (weeksPassed / rule.step) * unit + unit * i
                                                : (i + weeksPassed) * 7;
                const Date date = clock.moment(firstDay + offset, 0);
                if (isOpen(date)) {
                    keep(date, [&] {
                        return dayComponents(first.year, first.month, first.day + offset);
                    });
                }
            }
        }
        break;
    }
    case Kind::Monthly: {
        std::int64_t monthsPassed = 0;
        if (rule.customised && !startOpen) {
            monthsPassed = (today.year - year) * 12 + (today.month - month);
        }
        // How many elements each loop lets in before it stops.
        const std::int64_t monthLoop = rule.customised ? 100 : 5;
        const std::int64_t codeLoop = !rule.customised && !startOpen ? 100 : 5;
        for (std::int64_t i = 0; i <= 99; ++i) {
            if (count() > monthLoop) {
                break;
            }
            std::int64_t y = year;
            std::int64_t m = 0;
            if (!rule.customised) {
                y = startOpen ? year : today.year;
                m = (startOpen ? month : today.month) + i;
            } else {
                m = month + i * (times + 1) + monthsPassed;
            }
            const std::int64_t length = daysInMonth(y, m);
            for (const std::int64_t code : rule.codes()) {
                if (count() > codeLoop) {
                    break;
                }
                std::int64_t d = code;
                if (code == kLastDayOfMonthCode) {
                    d = length;
                } else if (code >= 29 && code <= 31 && length < code) {
                    continue;
                }
                const Date date = clock.momentOf(y, m, d, 0);
                if (isOpen(date)) {
                    keep(date, [&] { return dayComponents(y, m, d); });
                }
            }
        }
        break;
    }
    case Kind::OneOff:
    case Kind::Yearly: {
        std::int64_t skip = 0;
        if (rule.customised && !startOpen) {
            skip = (today.year - year) / (times + 1) + 1;
        }
        for (std::int64_t i = 0; i <= 99; ++i) {
            if (count() > 100) {
                break;
            }
            std::int64_t y = 0;
            if (!rule.customised) {
                y = (startOpen ? year : today.year) + i;
            } else if (startOpen) {
                y = year + i * (times + 1);
            } else {
                y = year + (i + skip) * (times + 1);
            }
            const Date date = clock.momentOf(y, month, day, 0);
            if (isOpen(date)) {
                keep(date, [&] { return dayComponents(y, month, day); });
            }
        }
        break;
    }
    default:
        return false;
    }

    if (rule.hasEnd && dates.size() > base) {
        // Every element after the end moment (the end date at the daily time) goes; removing one
        // equal element per such element, as the walk does, removes all of them.
        const double end = clock.moment(rule.endDay, rule.timeOfDay).secondsSince1970;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < dates.size() - base; ++i) {
            if (!(end - dates[base + i].secondsSince1970 < 0)) {
                if (elements != nullptr) {
                    (*elements)[kept] = std::move((*elements)[i]);
                }
                dates[base + kept] = dates[base + i];
                ++kept;
            }
        }
        if (elements != nullptr) {
            elements->resize(kept);
        }
        dates.resize(base + kept);
    }
    return clock.consistent();
}

// ---------------------------------------------------------------------------------------------

RuleBatch::RuleBatch(std::vector<const EventFields*> events, const Calendar& calendar)
    : events_(std::move(events)), calendar_(calendar), state_(std::make_unique<State>(calendar)) {
    state_->rules.resize(events_.size());
}

RuleBatch::~RuleBatch() = default;

namespace {

/// The rule of one event, compiled the first time the batch needs it.
const Rule& compiled(std::vector<std::optional<Rule>>& rules, std::size_t index,
                     const auto& compile) {
    std::optional<Rule>& slot = rules[index];
    if (!slot) {
        slot = compile();
    }
    return *slot;
}

} // namespace

bool RuleBatch::happensOnDay(std::size_t index, Date date) const {
    const DayKey key = state_->dayKey(date, calendar_);
    const EventFields& event = *events_[index];
    const Rule& rule = compiled(state_->rules, index, [&] { return state_->compile(event); });
    if (rule.kind == Kind::Nothing) {
        return false;
    }
    if (key.fast && rule.kind != Kind::Walk) {
        const bool answer = state_->happens(event, rule, key);
        if (state_->clock.consistent()) {
            return answer;
        }
    }
    return eventHappensOnDay(event, date, calendar_);
}

std::vector<std::size_t> RuleBatch::indicesOnDate(Date date) const {
    std::vector<std::size_t> all(events_.size());
    for (std::size_t index = 0; index < all.size(); ++index) {
        all[index] = index;
    }
    return indicesOnDate(date, all);
}

std::vector<std::size_t> RuleBatch::indicesOnDate(Date date,
                                                  const std::vector<std::size_t>& among) const {
    std::vector<std::size_t> result;
    if (among.empty()) {
        return result;
    }
    const DayKey key = state_->dayKey(date, calendar_);
    State& state = *state_;
    for (const std::size_t index : among) {
        const EventFields& event = *events_[index];
        const Rule& rule = compiled(state.rules, index, [&] { return state.compile(event); });
        bool answer = false;
        if (rule.kind != Kind::Nothing) {
            bool answered = false;
            if (key.fast && rule.kind != Kind::Walk) {
                answer = state.happens(event, rule, key);
                answered = state.clock.consistent();
            }
            if (!answered) {
                answer = eventHappensOnDay(event, date, calendar_);
            }
        }
        if (answer) {
            result.push_back(index);
        }
    }
    return result;
}

namespace {

/// The local days of a month view, lo ... hi, on which an event's walk composes a pass, each
/// handed to `mark`; more days than that are fine, fewer are not. A pass matches a day only if
/// its moment lies in the 24 hours from that day's midnight; with the clock's changes under six
/// hours each, a pass composed on day d (at a time within the day) lies before the midnight of
/// d + 2 and more than 24 hours after that of d - 2. So a day can only be matched by a pass of
/// the day itself or of a neighbour, and the days asked about that are no neighbour of any of
/// these are answered without asking.
template <class Mark>
void passDays(const EventFields& event, const Rule& rule, std::int64_t lo, std::int64_t hi,
              Mark&& mark) {
    const auto stepped = [&](std::int64_t firstDay, std::int64_t stepDays) {
        std::int64_t day = firstDay;
        if (day < lo) {
            day += ceilDiv(lo - day, stepDays) * stepDays;
        }
        for (; day <= hi; day += stepDays) {
            mark(day);
        }
    };
    switch (rule.kind) {
    case Kind::OneOff:
        mark(rule.startDay);
        break;
    case Kind::Daily:
        stepped(rule.startDay, rule.step);
        break;
    case Kind::Weekly:
        for (const std::int64_t firstDay : rule.firstDays()) {
            stepped(firstDay, 7 * rule.step);
        }
        break;
    case Kind::Monthly: {
        const CivilDate from = civilFromDays(lo);
        const CivilDate to = civilFromDays(hi);
        for (std::int64_t n = std::max(from.year * 12 + from.month - 1, rule.firstMonth);
             n <= to.year * 12 + to.month - 1; ++n) {
            if (rule.step != 1 && (n - rule.firstMonth) % rule.step != 0) {
                continue;
            }
            const std::int64_t year = floorDiv(n, 12);
            const std::int64_t month = floorMod(n, 12) + 1;
            const std::int64_t length = daysInMonth(year, month);
            const std::int64_t first = daysFromCivil(year, month, 1);
            for (const std::int64_t code : rule.codes()) {
                if (code != kLastDayOfMonthCode && code > length) {
                    continue;
                }
                mark(first + (code == kLastDayOfMonthCode ? length : code) - 1);
            }
        }
        break;
    }
    case Kind::Yearly: {
        // A lenient start month or day moves every pass by about as many years as it moves the
        // start (within a year: the leap days it runs over differ).
        const std::int64_t shift = rule.firstYear - event.eventStartDateYear;
        const std::int64_t firstYear = civilFromDays(lo).year - shift - 2;
        const std::int64_t lastYear = civilFromDays(hi).year - shift + 2;
        std::int64_t k =
            std::max<std::int64_t>(0, floorDiv(firstYear - event.eventStartDateYear, rule.step));
        for (; event.eventStartDateYear + k * rule.step <= lastYear; ++k) {
            mark(daysFromCivil(event.eventStartDateYear + k * rule.step, event.eventStartDateMonth,
                               event.eventStartDateDay));
        }
        break;
    }
    default:
        break;
    }
}

} // namespace

std::vector<std::vector<std::size_t>>
RuleBatch::indicesOnDates(const std::vector<Date>& dates) const {
    std::vector<std::vector<std::size_t>> result(dates.size());
    if (events_.empty() || dates.empty()) {
        return result;
    }
    State& state = *state_;
    // A kept batch's days hold about as many events as those of the month before.
    for (auto& cell : result) {
        cell.reserve(state.cellCapacity);
    }
    std::vector<DayKey> keys;
    keys.reserve(dates.size());
    bool run = true;
    for (const Date date : dates) {
        keys.push_back(state.dayKey(date, calendar_));
        const DayKey& key = keys.back();
        run = run && key.fast &&
              key.day == keys.front().day + static_cast<std::int64_t>(keys.size()) - 1;
    }
    const std::int64_t first = keys.front().day;
    const std::int64_t last = keys.back().day;
    if (run) {
        // The years whose clock changes the day questions would have looked at, learned up front
        // so that the clock's verdict on its own consistency is the one they would have met.
        for (std::int64_t year = civilFromDays(first - 62).year;
             year <= civilFromDays(last + 62).year; ++year) {
            (void)state.clock.moment(daysFromCivil(year, 1, 1), 0);
        }
        run = state.clock.consistent();
    }
    if (!run) {
        std::vector<std::size_t> all(events_.size());
        for (std::size_t index = 0; index < all.size(); ++index) {
            all[index] = index;
        }
        for (std::size_t c = 0; c < dates.size(); ++c) {
            result[c] = indicesOnDate(dates[c], all);
        }
        return result;
    }
    const auto cells = static_cast<std::int64_t>(dates.size());
    std::vector<std::uint8_t> candidate(dates.size());
    std::vector<double> dayStarts;
    dayStarts.reserve(keys.size());
    for (const DayKey& key : keys) {
        dayStarts.push_back(key.dayStart.secondsSince1970);
    }
    // A day is steady when one offset, of whole seconds, holds from the start of the day before
    // it to the end of the day after it: every moment there is a whole number of seconds, and a
    // pass at time t of day p lies (p - day) * 86400 + t / 1000 seconds after the day's
    // midnight, in its 24 hours for p = day only. unsteadyNear[c + 1] says whether a pass of
    // cell c (or of the day before or after the run) lies next to a day that is not steady.
    std::vector<std::uint8_t> steadyDay(dates.size());
    std::vector<std::uint8_t> unsteadyNear(dates.size() + 2, 0);
    for (std::int64_t c = 0; c < cells; ++c) {
        const auto offset = state.clock.steadyOffset(first + c - 1, first + c + 2);
        const bool steady = offset && *offset % 1000 == 0;
        steadyDay[static_cast<std::size_t>(c)] = steady ? 1 : 0;
        if (!steady) {
            for (std::int64_t near = c; near <= c + 2; ++near) {
                unsteadyNear[static_cast<std::size_t>(near)] = 1;
            }
        }
    }
    for (std::size_t index = 0; index < events_.size(); ++index) {
        const EventFields& event = *events_[index];
        const Rule& rule = compiled(state.rules, index, [&] { return state.compile(event); });
        if (rule.kind == Kind::Nothing) {
            continue;
        }
        if (rule.kind == Kind::Walk) {
            for (std::size_t c = 0; c < dates.size(); ++c) {
                if (eventHappensOnDay(event, dates[c], calendar_)) {
                    result[c].push_back(index);
                }
            }
            continue;
        }
        if (rule.kind == Kind::Daily || rule.kind == Kind::Weekly) {
            // Each pass is judged against the midnights of the days it can match (its own and
            // its neighbours'), where every day's walk would judge it. A walk's passes only
            // grow, so a day is matched exactly when one of them falls in its window: no pass
            // after a matching one can be judged missed first, and none before a missed one can
            // match. Around a steady day a pass (at a time within its day) matches its own day
            // and no other, so only passes near a clock change are composed.
            const std::int64_t timeOfDay = rule.kind == Kind::Daily ? rule.timeOfDay : 0;
            std::int64_t low = cells;
            std::int64_t high = -1;
            passDays(event, rule, first - 1, last + 1, [&](std::int64_t day) {
                const std::int64_t own = day - first;
                if (own >= 0 && own < cells && steadyDay[static_cast<std::size_t>(own)] != 0) {
                    candidate[static_cast<std::size_t>(own)] = 1;
                    low = std::min(low, own);
                    high = std::max(high, own);
                }
                if (unsteadyNear[static_cast<std::size_t>(own + 1)] == 0) {
                    return;
                }
                const double moment = state.clock.moment(day, timeOfDay).secondsSince1970;
                const std::int64_t from = std::max<std::int64_t>(0, own - 1);
                const std::int64_t to = std::min<std::int64_t>(cells - 1, own + 1);
                for (std::int64_t c = from; c <= to; ++c) {
                    if (steadyDay[static_cast<std::size_t>(c)] != 0) {
                        continue;
                    }
                    const double x = dayStarts[static_cast<std::size_t>(c)] - moment;
                    if (x > kOverInterval && x <= 0) {
                        candidate[static_cast<std::size_t>(c)] = 1;
                        low = std::min(low, c);
                        high = std::max(high, c);
                    }
                }
            });
            for (std::int64_t c = low; c <= high; ++c) {
                auto& matched = candidate[static_cast<std::size_t>(c)];
                if (matched != 0) {
                    matched = 0;
                    // The start and end bounds of happens().
                    const double dayStart = dayStarts[static_cast<std::size_t>(c)];
                    if (dayStart - rule.startDate >= 0 &&
                        (!rule.hasEnd || dayStart - rule.endDate <= 0)) {
                        result[static_cast<std::size_t>(c)].push_back(index);
                    }
                }
            }
            continue;
        }
        std::int64_t low = cells;
        std::int64_t high = -1;
        passDays(event, rule, first - 1, last + 1, [&](std::int64_t day) {
            const std::int64_t from = std::max<std::int64_t>(0, day - 1 - first);
            const std::int64_t to = std::min<std::int64_t>(cells - 1, day + 1 - first);
            for (std::int64_t c = from; c <= to; ++c) {
                candidate[static_cast<std::size_t>(c)] = 1;
            }
            low = std::min(low, from);
            high = std::max(high, to);
        });
        for (std::int64_t c = low; c <= high; ++c) {
            auto& marked = candidate[static_cast<std::size_t>(c)];
            if (marked != 0) {
                marked = 0;
                if (state.happens(event, rule, keys[static_cast<std::size_t>(c)])) {
                    result[static_cast<std::size_t>(c)].push_back(index);
                }
            }
        }
    }
    for (const auto& cell : result) {
        state.cellCapacity = std::max(state.cellCapacity, cell.size());
    }
    if (!state.clock.consistent()) {
        // Something the clock learned on the way can't be trusted: the walks answer.
        for (std::size_t c = 0; c < dates.size(); ++c) {
            result[c].clear();
            for (std::size_t index = 0; index < events_.size(); ++index) {
                if (state.rules[index]->kind != Kind::Nothing &&
                    eventHappensOnDay(*events_[index], dates[c], calendar_)) {
                    result[c].push_back(index);
                }
            }
        }
    }
    return result;
}

std::vector<std::string> RuleBatch::eventIdsOnDate(Date date) const {
    std::vector<std::string> ids;
    for (const std::size_t index : indicesOnDate(date)) {
        ids.push_back(events_[index]->eventId);
    }
    return ids;
}

std::vector<DateComponents> RuleBatch::occurrences(std::size_t index, Date now) const {
    const EventFields& event = *events_[index];
    const Rule& rule = compiled(state_->rules, index, [&] { return state_->compile(event); });
    const Today today = state_->today(now, calendar_);
    if (today.fast && rule.kind != Kind::Walk) {
        std::vector<DateComponents> elements;
        std::vector<Date> dates;
        if (state_->list(event, rule, today, &elements, dates)) {
            return elements;
        }
    }
    return occurrenceList(event, now, calendar_);
}

namespace {

/// The buckets of a plan's sort: minutes over the first 200 days after the plan's floor, where
/// the daily and weekly lists crowd, and days beyond (so that a bucket never spans two
/// midnights), in groups of 2,048.
constexpr double kFineWidth = 60.0;
constexpr double kFineSpan = 200 * 86400.0;
constexpr double kCoarseWidth = 86400.0;
constexpr std::uint32_t kFineBuckets = 288'000; // kFineSpan / kFineWidth
constexpr std::uint32_t kCoarseBuckets = std::uint32_t{1} << 20;
constexpr double kBucketSpan = kFineSpan + static_cast<double>(kCoarseBuckets) * kCoarseWidth;
constexpr std::uint32_t kGroupBits = 11;
constexpr std::uint32_t kGroupSize = std::uint32_t{1} << kGroupBits;
constexpr std::uint32_t kGroups = ((kFineBuckets + kCoarseBuckets) >> kGroupBits) + 1;

/// The bucket of a moment `since` seconds after the floor (0 ... kBucketSpan). It rises with
/// the moment (never falls), which is all the sort needs.
std::uint32_t bucketOf(double since) {
    return static_cast<std::uint32_t>(since < kFineSpan
                                          ? since * (1.0 / kFineWidth)
                                          : static_cast<double>(kFineBuckets) +
                                                (since - kFineSpan) * (1.0 / kCoarseWidth));
}

/// The working memory of a plan, kept by the thread from one plan to the next: the entries as
/// the lists make them (moment and event) with the count of each group of buckets, and one group
/// at a time for the sort. Fresh memory of the plan's size costs more to map than the work
/// itself. Every element is written before it is read.
struct PlanBuffers {
    std::vector<Date> dates;
    std::vector<std::uint32_t> owners;
    std::vector<std::uint32_t> groupCount;
    std::vector<PlannedOccurrence> group;
    std::vector<std::uint16_t> groupBuckets;
    /// Entries are counted from this moment on (see planFloor).
    double floor = 0;
    std::uint32_t highest = 0;
    /// Set by an entry before the floor, not finite or beyond the buckets.
    bool outside = false;

    void start(double from) {
        dates.clear();
        owners.clear();
        groupCount.assign(kGroups + 1, 0);
        floor = from;
        highest = 0;
        outside = false;
    }
    /// Counts the entries made since the first `made` into their groups, while they are still
    /// in the cache.
    void count(std::size_t made) {
        for (std::size_t i = made; i < dates.size(); ++i) {
            const double since = dates[i].secondsSince1970 - floor;
            if (!(since >= 0 && since < kBucketSpan)) {
                outside = true;
                continue;
            }
            const std::uint32_t key = bucketOf(since);
            highest = std::max(highest, key);
            ++groupCount[(key >> kGroupBits) + 1];
        }
    }
    /// Gives back buffers far larger than the last plan needed.
    void trim(std::size_t n) {
        if (dates.capacity() > 4 * n + 65'536) {
            dates = {};
            owners = {};
            group = {};
            groupBuckets = {};
        }
    }
};

/// The plan's buffers count events in 32 bits (a store holds far fewer).
void checkPlanSize(std::size_t events) {
    if (events > std::numeric_limits<std::uint32_t>::max()) {
        fatalStop(kOverflowMessage);
    }
}

/// The plan of the counted entries (entry i: event owners[i] at dates[i]) sorted by moment;
/// entries of equal moments stay in the order they were made. Entries are made event by event,
/// and entries of one event with equal moments are equal, so ordering by moment and then by
/// event gives that order. A plan is long (a hundred entries for each daily or yearly event), so
/// its entries are placed by two passes of a stable counting sort, first by group straight into
/// the plan and then, one group at a time through a small buffer, by bucket; only buckets found
/// out of order are then sorted. Reminders fall on whole minutes and day lists on midnights, so
/// most buckets hold one moment, already in the order of the events. A plan with entries before
/// the floor, not finite or thousands of years on is sorted as a whole instead.
std::vector<PlannedOccurrence> sortedPlan(PlanBuffers& buffers) {
    const std::vector<Date>& dates = buffers.dates;
    const std::vector<std::uint32_t>& owners = buffers.owners;
    const std::size_t n = dates.size();
    std::vector<PlannedOccurrence> plan(n);
    const auto before = [](const PlannedOccurrence& a, const PlannedOccurrence& b) {
        if (a.date.secondsSince1970 != b.date.secondsSince1970) {
            return a.date.secondsSince1970 < b.date.secondsSince1970;
        }
        return a.eventIndex < b.eventIndex;
    };
    if (n < 256 || buffers.outside) {
        for (std::size_t i = 0; i < n; ++i) {
            plan[i] = PlannedOccurrence{owners[i], dates[i]};
        }
        std::sort(plan.begin(), plan.end(), before);
        return plan;
    }
    const double floor = buffers.floor;
    std::vector<std::uint32_t>& next = buffers.groupCount;
    const std::size_t groups = (buffers.highest >> kGroupBits) + 1;
    std::size_t largest = 0;
    for (std::size_t g = 1; g <= groups; ++g) {
        largest = std::max<std::size_t>(largest, next[g]);
        next[g] += next[g - 1];
    }
    for (std::size_t i = 0; i < n; ++i) {
        const double seconds = dates[i].secondsSince1970;
        plan[next[bucketOf(seconds - floor) >> kGroupBits]++] =
            PlannedOccurrence{owners[i], Date{seconds}};
    }
    // Within a bucket the entries arrive in the order they were made, so the bucket is in
    // order exactly when its moments never fall.
    if (buffers.group.size() < largest) {
        buffers.group.resize(largest);
        buffers.groupBuckets.resize(largest);
    }
    PlannedOccurrence* const group = buffers.group.data();
    std::uint16_t* const buckets = buffers.groupBuckets.data();
    std::vector<std::uint32_t> inBucket(kGroupSize + 1);
    std::vector<double> lastSeconds(kGroupSize);
    std::vector<std::uint8_t> falls(kGroupSize);
    std::size_t groupStart = 0;
    for (std::size_t g = 0; g < groups; ++g) {
        const std::size_t groupEnd = next[g];
        const std::size_t size = groupEnd - groupStart;
        if (size == 0) {
            continue;
        }
        std::fill(inBucket.begin(), inBucket.end(), 0);
        std::fill(lastSeconds.begin(), lastSeconds.end(), -HUGE_VAL);
        std::fill(falls.begin(), falls.end(), 0);
        for (std::size_t i = 0; i < size; ++i) {
            group[i] = plan[groupStart + i];
            buckets[i] = static_cast<std::uint16_t>(
                bucketOf(group[i].date.secondsSince1970 - floor) & (kGroupSize - 1));
            ++inBucket[buckets[i] + 1];
        }
        inBucket[0] = static_cast<std::uint32_t>(groupStart);
        for (std::size_t b = 1; b <= kGroupSize; ++b) {
            inBucket[b] += inBucket[b - 1];
        }
        for (std::size_t i = 0; i < size; ++i) {
            const double seconds = group[i].date.secondsSince1970;
            const std::uint32_t b = buckets[i];
            falls[b] |= seconds < lastSeconds[b] ? 1 : 0;
            lastSeconds[b] = seconds;
            plan[inBucket[b]++] = group[i];
        }
        std::size_t bucketStart = groupStart;
        for (std::size_t b = 0; b < kGroupSize && bucketStart < groupEnd; ++b) {
            if (falls[b] != 0) {
                std::sort(plan.begin() + static_cast<std::ptrdiff_t>(bucketStart),
                          plan.begin() + static_cast<std::ptrdiff_t>(inBucket[b]), before);
            }
            bucketStart = inBucket[b];
        }
        groupStart = groupEnd;
    }
    return plan;
}

/// The plan's earliest moment can't lie before this: every list keeps only elements less than
/// a day past (a plan with any that do is sorted as a whole).
double planFloor(Date now) {
    return now.secondsSince1970 + kOverInterval - 60;
}

} // namespace

std::vector<PlannedOccurrence> RuleBatch::planOccurrences(Date now) const {
    State& state = *state_;
    const Today today = state.today(now, calendar_);
    checkPlanSize(events_.size());
    thread_local PlanBuffers buffers;
    buffers.start(planFloor(now));
    std::vector<Date>& dates = buffers.dates;
    std::vector<std::uint32_t>& owners = buffers.owners;
    for (std::size_t index = 0; index < events_.size(); ++index) {
        const EventFields& event = *events_[index];
        if (!event.eventNotiOrNot) {
            continue;
        }
        const Rule& rule = compiled(state.rules, index, [&] { return state.compile(event); });
        const std::size_t made = dates.size();
        if (!(today.fast && rule.kind != Kind::Walk &&
              state.list(event, rule, today, nullptr, dates))) {
            dates.resize(made);
            for (const DateComponents& element : occurrenceList(event, now, calendar_)) {
                dates.push_back(unwrap(calendar_.date(element)));
            }
        }
        owners.resize(dates.size(), static_cast<std::uint32_t>(index));
        buffers.count(made);
    }
    std::vector<PlannedOccurrence> plan = sortedPlan(buffers);
    buffers.trim(plan.size());
    return plan;
}

// ---------------------------------------------------------------------------------------------

KeptRuleBatch::KeptRuleBatch() = default;
KeptRuleBatch::~KeptRuleBatch() = default;

const RuleBatch& KeptRuleBatch::over(std::shared_ptr<const std::vector<eventInfo>> events,
                                     const Calendar& calendar) {
    // The day is that of now in this calendar; a batch of yesterday is not kept into today.
    const DateComponents today = calendar.dateComponents(kYear | kMonth | kDay, now());
    Stamp stamp{&calendar,
                calendarEnvironmentGeneration(),
                calendar.timeZoneId(),
                calendar.localeId(),
                calendar.firstWeekday(),
                calendar.minimumDaysInFirstWeek(),
                {today.year.value_or(0), today.month.value_or(0), today.day.value_or(0)}};
    if (batch_ == nullptr || events != events_ || !(stamp == stamp_)) {
        batch_.reset();
        events_ = std::move(events);
        stamp_ = std::move(stamp);
        batch_ = std::make_unique<RuleBatch>(*events_, calendar);
        ++compiles_;
    }
    return *batch_;
}

std::vector<PlannedOccurrence> planOccurrencesByWalk(const std::vector<const EventFields*>& events,
                                                     Date now, const Calendar& calendar) {
    checkPlanSize(events.size());
    PlanBuffers buffers;
    buffers.start(planFloor(now));
    for (std::size_t index = 0; index < events.size(); ++index) {
        const EventFields& event = *events[index];
        if (!event.eventNotiOrNot) {
            continue;
        }
        for (const DateComponents& element : occurrenceList(event, now, calendar)) {
            buffers.dates.push_back(unwrap(calendar.date(element)));
            buffers.owners.push_back(static_cast<std::uint32_t>(index));
        }
    }
    buffers.count(0);
    return sortedPlan(buffers);
}

} // namespace tidemark
