// What a row or card shows about an event, computed from its rule and the clock: the day count of
// a one-off date, whether a series is over, which event comes next, the weekday phrase of a weekly
// rule; and the small read layer over events and memos (lookups by id, counts, the memo cards of
// an event).
//
// The rules are pure functions of an event value, the moment that counts as "now" and a calendar.
// Class computeFunc only looks records up and calls them with now() and Calendar::current(); it
// writes nothing.
#pragma once

#include "calendar/Calendar.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tidemark {

/// The element of all browsing lists: a fresh identity for the view and the event it shows.
struct stackCardItem {
    std::string id;
    std::string eventId;

    bool operator==(const stackCardItem&) const = default;
};

/// The element of the memo list of an event.
struct stackMemoItem {
    std::string id;
    std::string memoId;

    bool operator==(const stackMemoItem&) const = default;
};

/// The text of `monthRuleDateString`: a monthly rule has no phrase of its own.
inline constexpr std::string_view kMonthRulePlaceholder = ">><<";
/// The text of a day count or next-date string that has no answer.
inline constexpr std::string_view kErrorText = "error";

// ---- The rules, as pure functions ------------------------------------------------------------

/// Days to or from a one-off event's start date (taken at midnight). A coming date counts the
/// partly spent day too (whole days ahead + 1); a past one counts whole days passed. "error" for a
/// daily repeating event and within one second either side of the start's midnight, "" for any
/// other repeating event.
std::string dayCountString(const EventFields& event, Date now, const Calendar& calendar);

/// True once 24 hours have passed since the start of the end day (the end day counts in full);
/// false without an end date or when the end date does not compose.
bool eventIsOver(const EventFields& event, Date now, const Calendar& calendar);

/// The eventId whose first coming occurrence lies nearest (the smallest interval from now, which
/// may be negative for today's element); "" when no event has any occurrence. Ties go to the
/// first such event in the order given.
std::string nearestEventId(const std::vector<eventInfo>& events, Date now,
                           const Calendar& calendar);

/// The phrase of a weekly rule: from `weekday` (the calendar's, 1 Sunday ... 7 Saturday) on, the
/// first day of the Monday-based week whose code (1 Monday ... 7 Sunday) is in `codes`, as the
/// localised "today", "tomorrow", "this <day>" or "next <day>". "" when no code matches or
/// `weekday` is outside 1 to 7.
std::string weekRuleDateString(std::int64_t weekday, const std::vector<std::int64_t>& codes);

/// The phrase of a monthly rule, which was never filled in: always ">><<".
std::string monthRuleDateString(std::int64_t day, const std::vector<std::int64_t>& codes);

/// The next-date phrase of a row: the weekly phrase for a repeating weekly event, ">><<" for a
/// monthly one (whether it repeats or not), "error" otherwise. Both lists are decoded, so
/// undecodable bytes stop the program.
std::string nextDateString(const EventFields& event, Date now, const Calendar& calendar);

/// Today as "yyyy-MM-dd" (mode 1) or "HH:mm:ss" (mode 2); "" for any other mode.
std::string todayString(std::int64_t mode, Date now, const Calendar& calendar);

/// The events, in the order given, with an occurrence in the 24 hours before the moment that
/// `components` compose to (the target at or after the occurrence). An event appears once per
/// matching occurrence.
std::vector<eventInfo> eventsOnDateComponents(const std::vector<eventInfo>& events,
                                              const DateComponents& components, Date now,
                                              const Calendar& calendar);

/// Reads a stored week or month list; bytes that are no keyed archive stop the program with
/// "Can't encode data: " and the reader's error.
std::vector<std::int64_t> decodeDayList(const Bytes& data);

// ---- The store-facing class ------------------------------------------------------------------

class computeFunc {
public:
    Store realm = Store::open();
    Results<eventInfo> eventInfoData;
    Results<memoDataForNotiObject> memoData;
    /// Declared beside the counts but read by none of them.
    Setting<bool> showDaysIncludeTheStartDayOrNot{"TL_UIOptions_showDaysIncludeTheStartDayOrNot",
                                                  false};
    /// True puts the newest memo first: the sort is descending when this is set.
    Setting<bool> ascendingForList{"UI_User_AscendingForListAtMemoForCardViewPage", false};

    // Day counts and next-date strings.
    std::string dayCountString(const std::string& eventId) const;
    bool eventIsOver(const eventInfo& event) const;
    std::string nearestEventId() const;
    std::string todayString(std::int64_t mode) const;
    std::string nextDateString(const std::string& eventId) const;
    std::string weekRuleDateString(std::int64_t weekday,
                                   const std::vector<std::int64_t>& codes) const;
    std::string monthRuleDateString(std::int64_t day, const std::vector<std::int64_t>& codes) const;
    std::vector<std::int64_t> decodeDayList(const Bytes& data) const;

    // Event and memo queries. Unknown ids give blank records with the records' defaults.
    eventInfo eventForId(const std::string& eventId) const;
    memoDataForNotiObject memoForId(const std::string& memoId) const;
    /// The memos of the event by timeStamp (see ascendingForList), equal stamps in store order,
    /// each with a new id at every call.
    std::vector<stackMemoItem> memoItemsForEvent(const std::string& eventId) const;
    bool eventExists(const std::string& eventId) const;
    bool memoExists(const std::string& memoId) const;
    std::string eventCountString() const;
    std::string starredEventCountString() const;
    eventObject eventObjectForId(const std::string& eventId) const;

    // Day query.
    std::vector<eventInfo> eventsOnDateComponents(const DateComponents& components) const;
};

} // namespace tidemark
