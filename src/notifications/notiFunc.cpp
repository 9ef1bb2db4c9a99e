#include "notifications/notiFunc.h"

#include "calendar/Calendar.h"
#include "notifications/NotificationCenter.h"

#include <cstdio>
#include <iostream>

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

} // namespace tidemark
