#include "shell/AppDelegate.h"

#include "cloud/cloudKitFunc.h"
#include "notifications/notiFunc.h"
#include "widgets/widgetFunc.h"

namespace tidemark {

AppDelegate::~AppDelegate() {
    if (notificationCenter().delegate() == this) {
        notificationCenter().setDelegate(nullptr);
    }
}

bool AppDelegate::didFinishLaunching(LaunchPublication publication) {
    // The lock wish lasts for one launch: it decides this run's lock and is then cleared.
    appLockStatu.set(appLockSettingFromUser.get());
    appLockSettingFromUser.set(false);

    if (switchOfNotiOpenOrNotForAllEvent.get()) {
        notificationCenter().setDelegate(this);
    }

    if (backgroundTaskScheduler().backgroundRefreshStatus() == BackgroundRefreshStatus::available) {
        bgFunc().cancelAllBgTasks();
        bgFunc().submitNotiRefreshTask();
    }

    if (cloudkitFuncStatus.get()) {
        cloudKitFunc().checkCloudAccountAndZones();
    }

    if (publication == LaunchPublication::now) {
        widgetFunc().publishEventDataToWidget();
    }
    return true;
}

std::vector<AppDelegate::PresentationOption> AppDelegate::willPresentNotification() const {
    return {PresentationOption::sound, PresentationOption::banner};
}

void AppDelegate::didReceiveResponse(const std::string& requestIdentifier) {
    userLaunchAppByPressLocalNotificationEventInfo.set(requestIdentifier);
    userLaunchAppByPressLocalNotificationStatu.set(true);
}

} // namespace tidemark
