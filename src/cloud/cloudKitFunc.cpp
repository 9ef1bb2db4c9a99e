#include "cloud/cloudKitFunc.h"

#include "base/Fatal.h"
#include "cloud/CloudRecordMapping.h"
#include "cloud/CloudService.h"

namespace tidemark {

namespace {

constexpr double kUserIdStepDelay = 1.28;
constexpr double kDecisionStepDelay = 2.3;

constexpr std::string_view kAccountStatusFailed = "1000";
constexpr std::string_view kNoAccount = "1003";
constexpr std::string_view kUserIdFailed = "1001";
constexpr std::string_view kOtherUser = "1018";
constexpr std::string_view kZonesMissing = "1100";

/// Clears the code only when it is the one this step owns.
void clearCode(cloudKitFunc& cloud, std::string_view code) {
    if (cloud.errorStringForiCloudDataTask.get() == code) {
        cloud.errorStringForiCloudDataTask.set("");
    }
}

void setZoneStatus(const std::string& zoneName, bool exists) {
    cloudKitFunc cloud;
    if (zoneName == kEventZoneName) {
        cloud.eventZoneStatuAtThisDevice.set(exists);
    } else if (zoneName == kMemoZoneName) {
        cloud.memoZoneStatuAtThisDevice.set(exists);
    }
}

/// The third step: what the answers of the first two mean for the switch.
void decideAfterCheck() {
    cloudKitFunc cloud;
    const bool on = cloud.cloudkitFuncStatus.get();
    const bool account = cloud.userCloudAccStatus.get();
    const bool sameUser = !cloud.cloudFuncNotActiveBecauseIdChanged.get();
    if (on && account && !sameUser) {
        cloud.cloudkitFuncStatus.set(false);
    } else if (on && account) {
        // The zone answers asked for now come too late for this decision: it is the previous
        // check's finding that counts, read before the new questions go out.
        const bool zonesKnown =
            cloud.eventZoneStatuAtThisDevice.get() && cloud.memoZoneStatuAtThisDevice.get();
        cloud.checkOneCloudZone(std::string(kEventZoneName));
        cloud.checkOneCloudZone(std::string(kMemoZoneName));
        if (zonesKnown) {
            clearCode(cloud, kZonesMissing);
        } else {
            cloud.errorStringForiCloudDataTask.set(std::string(kZonesMissing));
            cloud.cloudkitFuncStatus.set(false);
        }
    } else if (on) {
        cloud.cloudkitFuncStatus.set(false);
    } else if (account && sameUser) {
        // Off, but healthy: make the zones ready for a later switch-on.
        cloud.checkOneCloudZone(std::string(kEventZoneName));
        cloud.checkOneCloudZone(std::string(kMemoZoneName));
    }
}

} // namespace

void cloudKitFunc::checkCloudAccountAndZones() {
    refreshCloudAccountStatus();
    mainQueue().asyncAfter(kUserIdStepDelay, [] {
        cloudKitFunc cloud;
        if (cloud.userCloudAccStatus.get()) {
            cloud.refreshCloudUserId();
        }
    });
    mainQueue().asyncAfter(kDecisionStepDelay, [] { decideAfterCheck(); });
}

void cloudKitFunc::refreshCloudAccountStatus() {
    cloudService().accountStatus([](CloudAccountStatus status, std::optional<CloudError> error) {
        cloudKitFunc cloud;
        if (error) {
            cloud.errorStringForiCloudDataTask.set(std::string(kAccountStatusFailed));
            return;
        }
        clearCode(cloud, kAccountStatusFailed);
        mainQueue().async([status] {
            cloudKitFunc cloud;
            if (status == CloudAccountStatus::available) {
                cloud.userCloudAccStatus.set(true);
                clearCode(cloud, kNoAccount);
            } else {
                cloud.userCloudAccStatus.set(false);
                cloud.errorStringForiCloudDataTask.set(std::string(kNoAccount));
            }
        });
    });
}

void cloudKitFunc::refreshCloudUserId() {
    cloudService().fetchUserRecordId(
        [](std::optional<std::string> recordName, std::optional<CloudError> error) {
            cloudKitFunc cloud;
            if (error) {
                cloud.errorStringForiCloudDataTask.set(std::string(kUserIdFailed));
                return;
            }
            clearCode(cloud, kUserIdFailed);
            const std::string& user = unwrap(recordName);
            const std::string adopted = cloud.userIdInfoAtThisDevice.get();
            if (adopted.empty()) {
                // The first user ever seen on this device is adopted without question.
                cloud.userIdInfoAtThisDevice.set(user);
                if (cloud.cloudFuncNotActiveBecauseIdChanged.get()) {
                    cloud.cloudFuncNotActiveBecauseIdChanged.set(false);
                }
            } else if (adopted == user) {
                cloud.cloudFuncNotActiveBecauseIdChanged.set(false);
                clearCode(cloud, kOtherUser);
            } else {
                // Only the user's confirmation on the cloud page replaces the adopted user.
                cloud.cloudFuncNotActiveBecauseIdChanged.set(true);
                cloud.errorStringForiCloudDataTask.set(std::string(kOtherUser));
            }
        });
}

void cloudKitFunc::checkOneCloudZone(const std::string& zoneName) {
    cloudService().fetchZone(
        zoneName, [zoneName](std::optional<std::string> zone, std::optional<CloudError>) {
            // Whatever kept the zone from coming back, saving it is the remedy.
            if (zone) {
                setZoneStatus(*zone, true);
            } else {
                cloudKitFunc().createOneCloudZone(zoneName);
            }
        });
}

void cloudKitFunc::createOneCloudZone(const std::string& zoneName) {
    cloudService().saveZone(
        zoneName, [zoneName](std::optional<CloudError> error) { setZoneStatus(zoneName, !error); });
}

} // namespace tidemark
