// The shell's QML singletons: the app's own objects, taken from the app of the process
// (tideMarkApp::current()) when an engine first uses them. They stay the app's.
#pragma once

#include "shell/CalendarPage.h"
#include "shell/DataStore.h"
#include "shell/tideMarkApp.h"

#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

namespace detail {
template <typename T> T* keptByApp(T* object) {
    if (object) {
        QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    }
    return object;
}
} // namespace detail

/// "TideMarkApp": the colour scheme, the headline, the damaged-file messages.
struct TideMarkAppSingleton {
    Q_GADGET
    QML_FOREIGN(tidemark::tideMarkApp)
    QML_NAMED_ELEMENT(TideMarkApp)
    QML_SINGLETON
public:
    static tideMarkApp* create(QQmlEngine*, QJSEngine*) {
        return detail::keptByApp(tideMarkApp::current());
    }
};

/// "DataStore": the eventIds of the day that the calendar page shows.
struct DataStoreSingleton {
    Q_GADGET
    QML_FOREIGN(tidemark::DataStore)
    QML_NAMED_ELEMENT(DataStore)
    QML_SINGLETON
public:
    static DataStore* create(QQmlEngine*, QJSEngine*) {
        auto* app = tideMarkApp::current();
        return detail::keptByApp(app ? app->dataStore() : nullptr);
    }
};

/// "CalendarPage": the calendar page's selected day and its appearance hook.
struct CalendarPageSingleton {
    Q_GADGET
    QML_FOREIGN(tidemark::CalendarPage)
    QML_NAMED_ELEMENT(CalendarPage)
    QML_SINGLETON
public:
    static CalendarPage* create(QQmlEngine*, QJSEngine*) {
        auto* app = tideMarkApp::current();
        return detail::keptByApp(app ? app->calendarPage() : nullptr);
    }
};

} // namespace tidemark
