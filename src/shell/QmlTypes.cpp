#include "shell/QmlTypes.h"

#include "shell/AppStorage.h"
#include "shell/CalendarPage.h"
#include "shell/EventListModel.h"

#include <QtQml>

namespace tidemark {

void registerQmlTypes() {
    qmlRegisterType<AppStorage>("TideMark", 1, 0, "AppStorage");
    qmlRegisterType<EventListModel>("TideMark", 1, 0, "EventListModel");
    qmlRegisterUncreatableType<CalendarPage>("TideMark", 1, 0, "CalendarPage",
                                             "made by the app for its window");
}

} // namespace tidemark
