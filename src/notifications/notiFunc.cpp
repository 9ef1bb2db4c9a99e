#include "notifications/notiFunc.h"

#include "base/Fatal.h"
#include "calendar/Calendar.h"
#include "engine/RuleBatch.h"
#include "notifications/NotificationCenter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <optional>

namespace tidemark {

void notiFunc::requestNotiAuthorization() {
    notificationCenter().requestAuthorization([](bool granted, std::optional<std::string> error) {
        if (granted && !error) {
            notiFunc().notiAuthorizationForAppStatus.set(true);
        }
    });
}

void notiFunc::refreshNotiAuthorizationStatus() {
    notificationCenter().authorizationStatus([](AuthorizationStatus status) {
        notiFunc n;
        switch (status) {
        case AuthorizationStatus::notDetermined:
            n.requestNotiAuthorization();
            break;
        case AuthorizationStatus::denied:
            n.switchOfNotiOpenOrNotForAllEvent.set(false);
            n.notiAuthorizationForAppStatus.set(false);
            break;
        case AuthorizationStatus::authorized:
            n.notiAuthorizationForAppStatus.set(true);
            break;
        }
    });
}

void notiFunc::removeOneNotiRequest(const std::string& identifier) {
    notificationCenter().removePending({identifier});
}

void notiFunc::removeAllNotiRequests() {
    notificationCenter().removeAllPending();
}

void notiFunc::printPendingNotiRequests() {
    notificationCenter().pending([](std::vector<NotificationRequest> requests) {
        for (const auto& r : requests) {
            std::cout << r.identifier << " in " << r.delaySeconds << " s: " << r.title << std::endl;
        }
    });
}

namespace {

/// The request of one planned reminder: its content as the subtitle, the default sound and
/// time-sensitive delivery; none for a delay of zero or less.
std::optional<NotificationRequest> reminderRequest(const std::string& title,
                                                   const std::string& content, double timeInterval,
                                                   const std::string& identifier) {
    if (!(timeInterval > 0)) {
        return std::nullopt;
    }
    NotificationRequest request;
    request.identifier = identifier;
    request.title = title;
    request.subtitle = content;
    request.delaySeconds = timeInterval;
    request.sound = true;
    request.timeSensitive = true;
    return request;
}

} // namespace

void notiFunc::addOneNotiRequest(const std::string& title, const std::string& content,
                                 double timeInterval, const std::string& identifier) {
    if (auto request = reminderRequest(title, content, timeInterval, identifier)) {
        notificationCenter().add(*request, [](std::optional<std::string>) {});
    }
}

std::vector<NotificationRequest> notiFunc::plannedRequests() {
    const auto plan =
        plannedReminders(eventNotiOn.snapshot(), now(), Calendar::current(), kMaximumRequests);
    if (!switchOfNotiOpenOrNotForAllEvent.get()) {
        return {};
    }
    // The cap comes first: reminders already due take places among the 60 and file nothing.
    std::vector<NotificationRequest> requests;
    const std::size_t taken = std::min(plan.size(), kMaximumRequests);
    for (std::size_t i = 0; i < taken; ++i) {
        const auto& entry = plan[i];
        if (auto request = reminderRequest(entry.title, entry.content, entry.timeInterval,
                                           entry.eventNotiId + "@@" + newUUIDString())) {
            requests.push_back(std::move(*request));
        }
    }
    return requests;
}

void notiFunc::replanAllNotiRequests() {
    notificationCenter().replacePending([this] { return plannedRequests(); });
}

double leadTimeOffset(std::int64_t eventNotiType, std::int64_t hour, std::int64_t minute) {
    static constexpr std::array<std::int64_t, 10> offsets{
        0, -3600, -10800, -21600, 0, -86400, -259200, -604800, -1209600, -2419200};
    if (eventNotiType < 0 || eventNotiType > 9) {
        return 0;
    }
    std::int64_t seconds = offsets[static_cast<std::size_t>(eventNotiType)];
    if (eventNotiType >= 4) {
        // The occurrences of these rules stand at the start of their day: the time of day of
        // the reminder comes on top.
        seconds = checkedAdd(seconds, checkedAdd(checkedMul(hour, 3600), checkedMul(minute, 60)));
    }
    return static_cast<double>(seconds);
}

namespace {

/// One entry of the plan by interval: its interval and its place in the occurrence work.
struct Place {
    double timeInterval = 0;
    std::size_t position = 0;
};

bool placedBefore(const Place& a, const Place& b) {
    if (a.timeInterval < b.timeInterval || b.timeInterval < a.timeInterval) {
        return a.timeInterval < b.timeInterval;
    }
    return a.position < b.position;
}

/// The first `taken` places by interval, found without placing every entry: the occurrences
/// come in order of their moments, so once the least lead of all events can't bring an entry
/// before the last of the places kept, none after it can either. Nothing when that order can't
/// be relied on (a moment that is not finite) or a lead's arithmetic would stop the program; the
/// caller then places every entry.
std::optional<std::vector<Place>> leadingPlaces(const std::vector<eventInfo>& events,
                                                const std::vector<PlannedOccurrence>& occurrences,
                                                Date now, std::size_t taken) {
    if (taken == 0 || !(now.secondsSince1970 - now.secondsSince1970 == 0)) {
        return std::nullopt;
    }
    double previous = -HUGE_VAL;
    for (const PlannedOccurrence& occurrence : occurrences) {
        const double seconds = occurrence.date.secondsSince1970;
        if (!(seconds - seconds == 0 && previous <= seconds)) {
            return std::nullopt;
        }
        previous = seconds;
    }
    std::vector<double> leads(events.size(), 0);
    double least = HUGE_VAL;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const eventInfo& event = events[i];
        if (!event.eventNotiOrNot) {
            continue;
        }
        std::int64_t hours = 0;
        std::int64_t minutes = 0;
        std::int64_t sum = 0;
        if (__builtin_mul_overflow(event.eventNotiDateDayHour, std::int64_t{3600}, &hours) ||
            __builtin_mul_overflow(event.eventNotiDateDayMin, std::int64_t{60}, &minutes) ||
            __builtin_add_overflow(hours, minutes, &sum) ||
            __builtin_add_overflow(sum, std::int64_t{-2419200}, &sum)) {
            return std::nullopt;
        }
        leads[i] = leadTimeOffset(event.eventNotiType, event.eventNotiDateDayHour,
                                  event.eventNotiDateDayMin);
        least = std::min(least, leads[i]);
    }
    // The places kept so far, the last by interval on top.
    std::vector<Place> kept;
    kept.reserve(taken + 1);
    for (std::size_t position = 0; position < occurrences.size(); ++position) {
        const PlannedOccurrence& occurrence = occurrences[position];
        const double since = occurrence.date.timeIntervalSince(now);
        if (kept.size() == taken && kept.front().timeInterval < since + least) {
            break;
        }
        const Place place{since + leads[occurrence.eventIndex], position};
        if (kept.size() < taken) {
            kept.push_back(place);
            std::push_heap(kept.begin(), kept.end(), placedBefore);
        } else if (placedBefore(place, kept.front())) {
            std::pop_heap(kept.begin(), kept.end(), placedBefore);
            kept.back() = place;
            std::push_heap(kept.begin(), kept.end(), placedBefore);
        }
    }
    std::sort(kept.begin(), kept.end(), placedBefore);
    return kept;
}

} // namespace

std::vector<notiFunc::eventNotiInfoDataForAppOnly>
plannedReminders(const std::vector<eventInfo>& events, Date now, const Calendar& calendar,
                 std::size_t limit) {
    // The batch composes every element of every list (in order of their moments); the lead
    // times then reorder them by interval. Only the intervals are sorted, ties by their place in
    // the occurrence work (what a stable sort keeps), and only the entries asked for are made.
    const std::vector<PlannedOccurrence> occurrences =
        RuleBatch(events, calendar).planOccurrences(now);
    const std::size_t taken = std::min(limit, occurrences.size());
    std::optional<std::vector<Place>> order;
    if (taken < occurrences.size()) {
        order = leadingPlaces(events, occurrences, now, taken);
    }
    if (!order) {
        order.emplace();
        order->reserve(occurrences.size());
        for (const PlannedOccurrence& occurrence : occurrences) {
            const eventInfo& event = events[occurrence.eventIndex];
            order->push_back({occurrence.date.timeIntervalSince(now) +
                                  leadTimeOffset(event.eventNotiType, event.eventNotiDateDayHour,
                                                 event.eventNotiDateDayMin),
                              order->size()});
        }
        std::partial_sort(order->begin(), order->begin() + static_cast<std::ptrdiff_t>(taken),
                          order->end(), placedBefore);
    }
    std::vector<notiFunc::eventNotiInfoDataForAppOnly> plan;
    plan.reserve(taken);
    for (std::size_t i = 0; i < taken; ++i) {
        const Place& place = (*order)[i];
        const eventInfo& event = events[occurrences[place.position].eventIndex];
        plan.push_back({event.eventTitle, event.eventContent, place.timeInterval, event.eventNotiId,
                        event.eventId});
    }
    return plan;
}

void bgFunc::submitNotiRefreshTask() {
    BackgroundTaskRequest request{kTaskIdentifier,
                                  now().addingTimeInterval(kEarliestBeginDelay).secondsSince1970};
    if (auto error = backgroundTaskScheduler().submit(request)) {
        std::cout << "Error submitting background task request: " << *error << std::endl;
    }
}

void bgFunc::cancelAllBgTasks() {
    backgroundTaskScheduler().cancelAll();
}

void bgFunc::printPendingBgTasks() {
    for (const auto& r : backgroundTaskScheduler().pendingRequests()) {
        std::cout << r.identifier << " earliest " << r.earliestBeginDate << std::endl;
    }
}

void runBackgroundRefresh() {
    notiFunc().replanAllNotiRequests();
    bgFunc().cancelAllBgTasks();
    bgFunc().submitNotiRefreshTask();
}

} // namespace tidemark
