// Reminder planning. Made anew at each use; its state is the two settings below and the store.
// A plan is never kept: every run builds the list of coming reminders of all events that have
// one and files the first 60 as one-shot requests in place of the ones pending before.
#pragma once

#include "calendar/Calendar.h"
#include "notifications/NotificationCenter.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

class notiFunc {
public:
    Setting<bool> switchOfNotiOpenOrNotForAllEvent{"ALL_APP_switchOfNotiOpenOrNotForAllEvent",
                                                   true};
    Setting<bool> notiAuthorizationForAppStatus{"ALL_APP_notiAuthorizationForAppStatus", false};
    /// The events that have a reminder, in store order.
    Results<eventInfo> eventNotiOn =
        Results<eventInfo>().filter("eventNotiOrNot", Predicate::Op::Equal, true);

    /// One planned reminder of one run.
    struct eventNotiInfoDataForAppOnly {
        std::string title;
        std::string content;
        double timeInterval = 0; ///< seconds from the planning moment; may be 0 or negative
        std::string eventNotiId;
        std::string eventId;

        bool operator==(const eventNotiInfoDataForAppOnly&) const = default;
    };

    /// At most this many requests are filed by one run, counted before the past ones are
    /// left out.
    static constexpr std::size_t kMaximumRequests = 60;

    /// Asks for alert, sound and badge; a grant without error stores true. Never stores false.
    void requestNotiAuthorization();
    /// Not determined: asks; denied: switches both settings off; authorized: stores true.
    void refreshNotiAuthorizationStatus();
    void removeOneNotiRequest(const std::string& identifier);
    void removeAllNotiRequests();
    void printPendingNotiRequests();
    /// Files one request with the content as its subtitle, the default sound and time-sensitive
    /// delivery; a delay of zero or less files nothing. Errors are ignored.
    void addOneNotiRequest(const std::string& title, const std::string& content,
                           double timeInterval, const std::string& identifier);
    /// The requests of a planning run: every coming reminder planned, the first 60 of them
    /// less those already due; none with the master switch off.
    std::vector<NotificationRequest> plannedRequests();
    /// Replaces every pending request with a new plan, as one step that no planning run of
    /// another process (the app's or the agent's) interleaves with; the plan is made inside that
    /// step, from the records as they are then. Every "remove all, plan all" goes through here.
    void replanAllNotiRequests();
};

/// The display keys of the lead times; a position is the value of eventNotiType.
inline constexpr std::array<std::string_view, 10> notiSelectionStringForEvent{
    "noti30minsAgoBeforeEvent", "noti1hourAgoBeforeEvent", "noti3hourAgoBeforeEvent",
    "noti6hourAgoBeforeEvent",  "noti0dayAgoBeforeEvent",  "noti1dayAgoBeforeEvent",
    "noti3dayAgoBeforeEvent",   "noti1weekAgoBeforeEvent", "noti2weekAgoBeforeEvent",
    "noti1monthAgoBeforeEvent",
};

/// Seconds added to an occurrence's interval for a lead time: the row's offset, plus the chosen
/// hour and minute for the day leads (4 to 9). Row 0 subtracts nothing, and a value outside 0 to
/// 9 changes nothing.
double leadTimeOffset(std::int64_t eventNotiType, std::int64_t hour, std::int64_t minute);

/// The sorted plan of one run for those of these events that have a reminder: every element of
/// every occurrence list, its interval from `now` plus the lead time, sorted by interval (equal
/// intervals in the order of the occurrence work); only the first `limit` of them.
std::vector<notiFunc::eventNotiInfoDataForAppOnly>
plannedReminders(const std::vector<eventInfo>& events, Date now, const Calendar& calendar,
                 std::size_t limit = std::numeric_limits<std::size_t>::max());

/// Background refresh of the reminder plan.
class bgFunc {
public:
    static constexpr const char* kTaskIdentifier = "refreshNotiBgTaskEvery12Hours";
    static constexpr double kEarliestBeginDelay = 10800.0;

    /// Files the refresh with the earliest begin date now + 10800 s; a failure prints
    /// "Error submitting background task request: " and the error, nothing more.
    void submitNotiRefreshTask();
    void cancelAllBgTasks();
    void printPendingBgTasks();
};

/// The handler of the background refresh "refreshNotiBgTaskEvery12Hours": plans the reminders
/// again in place of the pending ones and files the next refresh, so that the chain goes on.
void runBackgroundRefresh();

} // namespace tidemark
