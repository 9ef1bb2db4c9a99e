#include "settings/SettingsTypes.h"

#include "settings/AppLockModel.h"
#include "settings/CloudPageModel.h"
#include "settings/InterchangeModel.h"
#include "settings/NotiSettingModel.h"
#include "settings/SettingViewModel.h"

#include <QtQml>

namespace tidemark {

void registerSettingsTypes() {
    qmlRegisterType<NotiSettingModel>("TideMark", 1, 0, "NotiSettingModel");
    qmlRegisterType<SettingViewModel>("TideMark", 1, 0, "SettingViewModel");
    qmlRegisterType<AppLockModel>("TideMark", 1, 0, "AppLockModel");
    qmlRegisterType<CloudPageModel>("TideMark", 1, 0, "CloudPageModel");
    qmlRegisterType<InterchangeModel>("TideMark", 1, 0, "InterchangeModel");
}

} // namespace tidemark
