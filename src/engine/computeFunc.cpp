#include "engine/computeFunc.h"

#include "base/Fatal.h"
#include "base/Localize.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

namespace tidemark {

namespace {

/// A date of three calendar numbers at 00:00 local time.
std::optional<Date> midnightOf(const Calendar& calendar, std::int64_t year, std::int64_t month,
                               std::int64_t day) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    return calendar.date(c);
}

constexpr double kSecondsPerDay = 86400.0;

/// Every key of the weekly phrases ends in this; the first word names the day.
constexpr std::string_view kNextEventDateKeySuffix = "StringAtComputeFuncPageForNextEventDate";

/// Week code (1 Monday ... 7 Sunday) of the calendar's weekday (1 Sunday ... 7 Saturday).
std::int64_t weekCodeOfWeekday(std::int64_t weekday) {
    return weekday == 1 ? 7 : weekday - 1;
}

} // namespace

std::string dayCountString(const EventFields& event, Date now, const Calendar& calendar) {
    if (event.eventRepeatOrNot) {
        return std::string(repeatTypeOf(event) == RepeatType::daily ? kErrorText : "");
    }
    const auto start = midnightOf(calendar, event.eventStartDateYear, event.eventStartDateMonth,
                                  event.eventStartDateDay);
    const double interval = start ? start->timeIntervalSince(now) : 0.0;
    // Seconds to days in floating point, cut towards zero: the count is of whole 24-hour spans,
    // not of calendar days.
    const std::int64_t days = truncatingToInt(interval / 60 / 60 / 24);
    const std::int64_t seconds = truncatingToInt(interval);
    if (seconds > 0) {
        return std::to_string(checkedAdd(days, 1));
    }
    if (seconds < 0) {
        return std::to_string(checkedSub(0, days));
    }
    return std::string(kErrorText);
}

bool eventIsOver(const EventFields& event, Date now, const Calendar& calendar) {
    if (!event.eventHaveEndDateOrNot) {
        return false;
    }
    const auto end = midnightOf(calendar, event.eventEndDateYear, event.eventEndDateMonth,
                                event.eventEndDateDay);
    const double interval = end ? end->timeIntervalSince(now) : 0.0;
    return interval <= kOverInterval;
}

std::string nearestEventId(const std::vector<eventInfo>& events, Date now,
                           const Calendar& calendar) {
    // Intervals by eventId, in the order the ids were first seen; a repeated id takes the later
    // value in its first place. Among equal smallest intervals the first entry wins, so ties go
    // to the earliest event in store order. (Any order would do for the tie; store order is the
    // one that is stable from call to call.)
    std::vector<std::pair<std::string, double>> intervals;
    std::unordered_map<std::string, std::size_t> positionOf;
    const RuleBatch batch(events, calendar);
    for (std::size_t i = 0; i < events.size(); ++i) {
        const auto list = batch.occurrences(i, now);
        if (list.empty()) {
            continue;
        }
        const double interval = unwrap(calendar.date(list.front())).timeIntervalSince(now);
        const auto [found, added] = positionOf.try_emplace(events[i].eventId, intervals.size());
        if (added) {
            intervals.emplace_back(events[i].eventId, interval);
        } else {
            intervals[found->second].second = interval;
        }
    }
    if (intervals.empty()) {
        return "";
    }
    auto smallest =
        std::min_element(intervals.begin(), intervals.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return smallest->first;
}

std::string weekRuleDateString(std::int64_t weekday, const std::vector<std::int64_t>& codes) {
    if (weekday < 1 || weekday > 7) {
        return "";
    }
    // Walk the Monday-based week from today's code, seven days round. Days after today's code in
    // the same Monday-to-Sunday week are "this week", days that wrap past Sunday "next week".
    const std::int64_t todayCode = weekCodeOfWeekday(weekday);
    for (std::int64_t offset = 0; offset < 7; ++offset) {
        const std::int64_t code = (todayCode - 1 + offset) % 7 + 1;
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
            continue;
        }
        std::string word;
        if (offset == 0) {
            word = "today";
        } else if (offset == 1) {
            word = "tomorrow";
        } else if (code > todayCode) {
            word = "thisWeek" + std::to_string(code);
        } else {
            word = "nextWeek" + std::to_string(code);
        }
        return localized(word + std::string(kNextEventDateKeySuffix));
    }
    return "";
}

std::string monthRuleDateString(std::int64_t /*day*/, const std::vector<std::int64_t>& /*codes*/) {
    return std::string(kMonthRulePlaceholder);
}

std::string nextDateString(const EventFields& event, Date now, const Calendar& calendar) {
    if (event.eventRepeatOrNot && repeatTypeOf(event) == RepeatType::weekly) {
        const auto today = calendar.dateComponents(kWeekday, now);
        return weekRuleDateString(unwrap(today.weekday),
                                  decodeDayList(event.eventDateWhenEveryWeek));
    }
    if (repeatTypeOf(event) == RepeatType::monthly) {
        const auto today = calendar.dateComponents(kDay, now);
        return monthRuleDateString(unwrap(today.day), decodeDayList(event.eventDateWhenEveryMonth));
    }
    return std::string(kErrorText);
}

std::string todayString(std::int64_t mode, Date now, const Calendar& calendar) {
    switch (mode) {
    case 1:
        return calendar.format(now, "yyyy-MM-dd");
    case 2:
        return calendar.format(now, "HH:mm:ss");
    default:
        return "";
    }
}

std::vector<eventInfo> eventsOnDateComponents(const std::vector<eventInfo>& events,
                                              const DateComponents& components, Date now,
                                              const Calendar& calendar) {
    std::vector<eventInfo> result;
    // The target is composed only once an element needs it, so that components without a date
    // stop the program only when there is something to compare them with.
    std::optional<Date> target;
    const RuleBatch batch(events, calendar);
    for (std::size_t i = 0; i < events.size(); ++i) {
        const eventInfo& event = events[i];
        for (const auto& element : batch.occurrences(i, now)) {
            if (!target) {
                target = unwrap(calendar.date(components));
            }
            const Date occurrence = unwrap(calendar.date(element));
            const double x = target->timeIntervalSince(occurrence);
            if (x >= 0.0 && x < kSecondsPerDay) {
                result.push_back(event);
            }
        }
    }
    return result;
}

std::vector<std::int64_t> decodeDayList(const Bytes& data) {
    return decodeDayListArchive(data, kCantEncodeData);
}

// ---- computeFunc -----------------------------------------------------------------------------

std::string computeFunc::dayCountString(const std::string& eventId) const {
    return tidemark::dayCountString(eventObjectForId(eventId), now(), Calendar::current());
}

bool computeFunc::eventIsOver(const eventInfo& event) const {
    return tidemark::eventIsOver(event, now(), Calendar::current());
}

std::string computeFunc::nearestEventId() const {
    return tidemark::nearestEventId(eventInfoData.snapshot(), now(), Calendar::current());
}

std::string computeFunc::todayString(std::int64_t mode) const {
    return tidemark::todayString(mode, now(), Calendar::current());
}

std::string computeFunc::nextDateString(const std::string& eventId) const {
    return tidemark::nextDateString(eventObjectForId(eventId), now(), Calendar::current());
}

std::string computeFunc::weekRuleDateString(std::int64_t weekday,
                                            const std::vector<std::int64_t>& codes) const {
    return tidemark::weekRuleDateString(weekday, codes);
}

std::string computeFunc::monthRuleDateString(std::int64_t day,
                                             const std::vector<std::int64_t>& codes) const {
    return tidemark::monthRuleDateString(day, codes);
}

std::vector<std::int64_t> computeFunc::decodeDayList(const Bytes& data) const {
    return tidemark::decodeDayList(data);
}

eventInfo computeFunc::eventForId(const std::string& eventId) const {
    return eventInfoData.filter("eventId", Predicate::Op::Equal, eventId)
        .first()
        .value_or(eventInfo{});
}

memoDataForNotiObject computeFunc::memoForId(const std::string& memoId) const {
    return memoData.filter("memoId", Predicate::Op::Equal, memoId)
        .first()
        .value_or(memoDataForNotiObject{});
}

std::vector<stackMemoItem> computeFunc::memoItemsForEvent(const std::string& eventId) const {
    // The setting's sense is the reverse of its name: set, the newest stamp comes first.
    const bool ascending = !ascendingForList.get();
    const auto memos = memoData.filter("eventId", Predicate::Op::Equal, eventId)
                           .sorted("timeStamp", ascending)
                           .snapshot();
    std::vector<stackMemoItem> items;
    items.reserve(memos.size());
    for (const auto& memo : memos) {
        items.push_back(stackMemoItem{newUUIDString(), memo.memoId});
    }
    return items;
}

bool computeFunc::eventExists(const std::string& eventId) const {
    return realm.count<eventInfo>(Query{}.equal("eventId", eventId)) > 0;
}

bool computeFunc::memoExists(const std::string& memoId) const {
    return realm.count<memoDataForNotiObject>(Query{}.equal("memoId", memoId)) > 0;
}

std::string computeFunc::eventCountString() const {
    return std::to_string(eventInfoData.count());
}

std::string computeFunc::starredEventCountString() const {
    return std::to_string(
        eventInfoData.filter("eventStarOrNot", Predicate::Op::Equal, true).count());
}

eventObject computeFunc::eventObjectForId(const std::string& eventId) const {
    return eventAs<eventObject>(realm.object<eventInfo>(eventId).value_or(eventInfo{}));
}

std::vector<eventInfo> computeFunc::eventsOnDateComponents(const DateComponents& components) const {
    return tidemark::eventsOnDateComponents(eventInfoData.snapshot(), components, now(),
                                            Calendar::current());
}

} // namespace tidemark
