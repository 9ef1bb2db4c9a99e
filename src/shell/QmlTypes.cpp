#include "shell/QmlTypes.h"

#include "browsing/BrowsingTypes.h"
#include "editing/EditingTypes.h"
#include "settings/SettingsTypes.h"
#include "shell/AppStorage.h"
#include "shell/CalendarPage.h"
#include "toolkit/ToolkitTypes.h"

#include <QtQml>

namespace tidemark {

void registerQmlTypes() {
    qmlRegisterType<AppStorage>("TideMark", 1, 0, "AppStorage");
    qmlRegisterUncreatableType<CalendarPage>("TideMark", 1, 0, "CalendarPage",
                                             "made by the app for its window");
    registerToolkitTypes();
    registerBrowsingTypes();
    registerEditingTypes();
    registerSettingsTypes();
}

} // namespace tidemark
