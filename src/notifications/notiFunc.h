// Reminder planning's entry points. Made anew at each use; its state is the two settings below and
// the store. This layer holds the authorisation and removal steps that launch and first launch
// use; filing the plan itself (addOneNotiRequest, planAllNotiRequests) comes with the planner.
#pragma once

#include "records/Defaults.h"

#include <string>

namespace tidemark {

class notiFunc {
public:
    Setting<bool> switchOfNotiOpenOrNotForAllEvent{"ALL_APP_switchOfNotiOpenOrNotForAllEvent",
                                                   true};
    Setting<bool> notiAuthorizationForAppStatus{"ALL_APP_notiAuthorizationForAppStatus", false};

    /// Asks for alert, sound and badge; a grant without error stores true. Never stores false.
    void requestNotiAuthorization();
    /// Not determined: asks; denied: switches both settings off; authorized: stores true.
    void refreshNotiAuthorizationStatus();
    void removeOneNotiRequest(const std::string& identifier);
    void removeAllNotiRequests();
};

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

} // namespace tidemark
