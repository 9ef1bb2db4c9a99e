#include "settings/SettingsTypes.h"

#include "settings/NotiSettingModel.h"

#include <QtQml>

namespace tidemark {

void registerSettingsTypes() {
    qmlRegisterType<NotiSettingModel>("TideMark", 1, 0, "NotiSettingModel");
}

} // namespace tidemark
