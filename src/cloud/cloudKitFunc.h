// Whether the cloud function may run on this device: is an account signed in, is it the account
// this device has been using, do both zones exist. Everything found goes to persisted settings;
// callers start a check and read the settings a little later. Nothing here returns a value or
// takes a callback.
//
// The codes in errorStringForiCloudDataTask, each set by one step and cleared only by that step's
// next success:
//   "1000" asking for the account status failed       "1003" no account is available
//   "1001" fetching the user's identifier failed       "1018" another user than the adopted one
//   "1100" the switch is on but the zones are not both known to exist
#pragma once

#include "records/Defaults.h"

#include <string>

namespace tidemark {

class cloudKitFunc {
public:
    Setting<std::string> errorStringForiCloudDataTask{"FUNC_CLOUD_errorStringForiCloudDataTask",
                                                      ""};
    /// The user's switch for the cloud function; the checks only ever turn it off.
    Setting<bool> cloudkitFuncStatus{"ALL_APP_cloudkitFuncStatus", false};
    Setting<bool> userCloudAccStatus{"ALL_APP_userCloudAccStatus", false};
    /// The record name of the user this device adopted ("" until the first one is seen).
    Setting<std::string> userIdInfoAtThisDevice{"FUNC_CLOUD_userIdInfoAtThisDevice", ""};
    Setting<bool> cloudFuncNotActiveBecauseIdChanged{
        "FUNC_CLOUD_cloudFuncNotActiveBecauseIdChanged", false};
    Setting<bool> eventZoneStatuAtThisDevice{"FUNC_CLOUD_eventZoneStatuAtThisDevice", false};
    Setting<bool> memoZoneStatuAtThisDevice{"FUNC_CLOUD_memoZoneStatuAtThisDevice", false};

    /// The whole check, in three steps on the main queue counted from now: the account status at
    /// once, the user's identifier after 1.28 s (with an account), the decision after 2.3 s. It
    /// waits for no answer: the timing is what orders the steps. Returns at once.
    void checkCloudAccountAndZones();
    /// Asks for the account status; the answer sets userCloudAccStatus and the codes "1000" and
    /// "1003".
    void refreshCloudAccountStatus();
    /// Asks for the signed-in user; the answer adopts the first user ever seen, or compares
    /// (cloudFuncNotActiveBecauseIdChanged, codes "1001" and "1018").
    void refreshCloudUserId();
    /// Asks whether the zone exists: if so its status becomes true, if not it is created.
    void checkOneCloudZone(const std::string& zoneName);
    /// Creates the zone; its status follows the outcome.
    void createOneCloudZone(const std::string& zoneName);
};

} // namespace tidemark
