// The application delegate: the launch sequence and the answers to the notification centre.
#pragma once

#include "notifications/NotificationCenter.h"
#include "records/Defaults.h"

#include <string>
#include <vector>

namespace tidemark {

class AppDelegate final : public NotificationCenterDelegate {
public:
    Setting<bool> switchOfNotiOpenOrNotForAllEvent{"ALL_APP_switchOfNotiOpenOrNotForAllEvent",
                                                   true};
    Setting<std::string> testForBgTaskString{"BG_Task_testForBgTask", ""};
    Setting<Bytes> dateMutiSeletedDataInfoForCalendarView{
        "ALL_APP_dateMutiSeletedDataInfoForCalendarView", {}};
    Setting<bool> cloudkitFuncStatus{"ALL_APP_cloudkitFuncStatus", false};
    Setting<bool> userCloudAccStatus{"ALL_APP_userCloudAccStatus", false};
    Setting<bool> cloudFuncNotActiveBecauseIdChanged{
        "FUNC_CLOUD_cloudFuncNotActiveBecauseIdChanged", false};
    Setting<bool> userLaunchStatus{"userLaunchStatus", false};
    Setting<bool> appLockStatu{"APP_FUNC_appLockStatu", false};
    Setting<bool> appLockSettingFromUser{"APP_FUNC_appLockSettingFromUser", false};
    Setting<std::string> allAppBackgroundSettingString{"UI_BGIMAGE_allAppBackgroundSettingString",
                                                       "noneBlankBackgroungImage"};
    Setting<bool> userLaunchAppByPressLocalNotificationStatu{
        "FUNC_NOTI_userLaunchAppByPressLocalNotificationStatu", false};
    Setting<std::string> userLaunchAppByPressLocalNotificationEventInfo{
        "FUNC_NOTI_userLaunchAppByPressLocalNotificationEventInfo", ""};

    ~AppDelegate() override;

    /// Who makes the launch's publication to the widgets: the launch sequence itself, or its
    /// caller later (the app, once its window has drawn).
    enum class LaunchPublication { now, byCaller };

    /// The launch sequence: app lock for this run, the notification delegate, background
    /// refresh, the deferred cloud check and one publication to the widgets. Returns true.
    bool didFinishLaunching(LaunchPublication publication = LaunchPublication::now);

    /// How a notification that arrives while the app is in front is shown.
    enum class PresentationOption { sound, banner };
    std::vector<PresentationOption> willPresentNotification() const;

    /// The user tapped a delivered notification: remembers its request identifier, then flags it.
    void didReceiveResponse(const std::string& requestIdentifier) override;
};

} // namespace tidemark
