#include "shell/tideMarkApp.h"

#include "calendar/Calendar.h"
#include "notifications/notiFunc.h"
#include "platform/linux/QtDispatcher.h"
#include "platform/linux/SystemColorScheme.h"
#include "records/PrivateFiles.h"
#include "shell/CalendarPage.h"
#include "shell/QmlTypes.h"
#include "widgets/widgetFunc.h"

#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>
#include <QtQml>

namespace tidemark {
namespace {
tideMarkApp* currentApp = nullptr;
} // namespace

tideMarkApp::tideMarkApp(QObject* parent) : QObject(parent) {
    themeObservation_ =
        userTheme.observe([this] { emit preferredColorSchemeChanged(); }, queuedOn(this));
    currentApp = this;
}

tideMarkApp::~tideMarkApp() {
    if (currentApp == this) {
        currentApp = nullptr;
    }
}

tideMarkApp* tideMarkApp::current() {
    return currentApp;
}

DataStore* tideMarkApp::dataStore() {
    if (!dataStore_) {
        dataStore_ = std::make_unique<DataStore>();
    }
    return dataStore_.get();
}

QString tideMarkApp::preferredColorScheme() const {
    switch (userTheme.get()) {
    case Theme::light:
        return QStringLiteral("light");
    case Theme::dark:
        return QStringLiteral("dark");
    case Theme::systemDefault:
        break;
    }
    return systemColorScheme_ ? systemColorScheme_->scheme() : QString();
}

QString tideMarkApp::headline(int tabViewSelection) const {
    switch (tabViewSelection) {
    case 0:
        return QString::fromStdString(Calendar::current().formatSkeleton(now(), "MMMMEEEEd"));
    case 1:
        return qtTrId("nextFewDaysEventViewNaviLinkStringBigTitleAtBrandNewMainView");
    default:
        return {};
    }
}

bool tideMarkApp::launch(QQmlApplicationEngine& engine) {
    appDelegate_.didFinishLaunching(AppDelegate::LaunchPublication::byCaller);
    systemColorScheme_ = std::make_unique<SystemColorScheme>();
    connect(systemColorScheme_.get(), &SystemColorScheme::darkChanged, this,
            &tideMarkApp::preferredColorSchemeChanged);

    registerQmlTypes();
    calendarPage_ = new CalendarPage(dataStore(), this);

    engine.load(moduleFileUrl(QStringLiteral("Main.qml")));
    // The launch's publication to the widgets (every event encoded and written to the shared
    // suite) runs once the window has drawn its first frame, so the window doesn't wait for it.
    auto* window = engine.rootObjects().isEmpty()
                       ? nullptr
                       : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (window == nullptr) {
        widgetFunc().publishEventDataToWidget();
    } else {
        connect(
            window, &QQuickWindow::frameSwapped, this,
            [] { widgetFunc().publishEventDataToWidget(); },
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    }
    return !engine.rootObjects().isEmpty();
}

QStringList tideMarkApp::takeDamagedFileMessages() {
    QStringList messages;
    bool replan = false;
    bool republish = false;
    for (const auto& notice : takeDamagedFileNotices()) {
        const char* key = "damagedSettingsFileNoticeString";
        if (notice.kind == DamagedFileKind::reminders) {
            key = "damagedRemindersFileNoticeString";
            replan = true;
        } else if (notice.kind == DamagedFileKind::sharedSettings) {
            key = "damagedSharedSettingsFileNoticeString";
            republish = true;
        }
        messages << qtTrId(key).arg(QString::fromStdString(notice.keptAs.string()));
    }
    if (replan) {
        notiFunc().replanAllNotiRequests();
    }
    if (republish) {
        widgetFunc().publishEventDataToWidget();
    }
    return messages;
}

void tideMarkApp::handleBackgroundRefresh() {
    runBackgroundRefresh();
}

} // namespace tidemark
