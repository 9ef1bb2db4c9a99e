// tidemark: the app. Wires the services and starts the window; nothing else lives here.
#include "base/Localize.h"
#include "platform/linux/DBusWidgetCenter.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/PamAuthenticator.h"
#include "platform/linux/QtDispatcher.h"
#include "platform/linux/WebDavCloudService.h"
#include "settings/CloudPageModel.h"
#include "settings/InterchangeModel.h"
#include "shell/LaunchOptions.h"
#include "shell/Screenshots.h"
#include "shell/SingleInstance.h"
#include "shell/Translations.h"
#include "shell/tideMarkApp.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tidemark"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tide Mark"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.tidemark.TideMark"));

    QString error;
    const auto options = tidemark::parseLaunchOptions(QGuiApplication::arguments(), &error);
    if (!options) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return error.contains(QStringLiteral("Usage:")) ? 0 : 2;
    }
    // A backup or restore without a window: the account from the settings and the keyring.
    if (options->cloudTransfer != tidemark::CloudTransfer::none) {
        tidemark::setCalendarEnvironment(options->environment);
        tidemark::installTranslations(app, options->environment.localeId);
        tidemark::setMainQueue(std::make_shared<tidemark::QtMainQueue>(&app));
        tidemark::setWidgetCenter(std::make_shared<tidemark::DBusWidgetCenter>());
        tidemark::setCloudService(std::make_shared<tidemark::WebDavCloudService>());
        return tidemark::runHeadlessCloudTransfer(options->cloudTransfer ==
                                                  tidemark::CloudTransfer::backup);
    }
    // A calendar file written or read without a window; imported events reach the widgets and,
    // with sync on, the cloud.
    if (!options->exportIcsPath.isEmpty() || !options->importIcsPath.isEmpty()) {
        tidemark::setCalendarEnvironment(options->environment);
        tidemark::installTranslations(app, options->environment.localeId);
        tidemark::setMainQueue(std::make_shared<tidemark::QtMainQueue>(&app));
        tidemark::setWidgetCenter(std::make_shared<tidemark::DBusWidgetCenter>());
        tidemark::setCloudService(std::make_shared<tidemark::WebDavCloudService>());
        return options->exportIcsPath.isEmpty()
                   ? tidemark::runHeadlessImport(options->importIcsPath, options->assumeYes)
                   : tidemark::runHeadlessExport(options->exportIcsPath);
    }
    // One app per session: a second start hands its request to the first and ends. Pictures
    // are taken by a process of their own, whatever else runs.
    tidemark::SingleInstance instance;
    const bool takesPictures =
        !options->screenshotPath.isEmpty() || !options->screenshotDir.isEmpty();
    if (!takesPictures && instance.claim(options->url, options->notificationResponse) ==
                              tidemark::SingleInstance::Outcome::handedOver) {
        return 0;
    }
    // Pictures are taken on a copy of the user's data: the tour's taps change settings.
    QTemporaryDir pictureData;
    if (takesPictures && !tidemark::useCopyOfUserData(pictureData.path())) {
        std::fprintf(stderr, "Could not copy the data for the pictures to %s\n",
                     qPrintable(pictureData.path()));
        return 1;
    }
    tidemark::setCalendarEnvironment(options->environment);
    tidemark::installTranslations(app, options->environment.localeId);
    tidemark::setWidgetCenter(std::make_shared<tidemark::DBusWidgetCenter>());
    tidemark::setDeviceOwnerAuthenticator(std::make_shared<tidemark::PamAuthenticator>());
    tidemark::setMainQueue(std::make_shared<tidemark::QtMainQueue>(&app));
    // The pictures' walk turns no switch that reaches a server.
    if (!takesPictures) {
        tidemark::setCloudService(std::make_shared<tidemark::WebDavCloudService>());
    }
    // Reminders are filed with the agent's file; a run that only takes pictures files none.
    std::shared_ptr<tidemark::LinuxNotificationCenter> reminders;
    if (!takesPictures) {
        reminders = std::make_shared<tidemark::LinuxNotificationCenter>();
        tidemark::setNotificationCenter(reminders);
        tidemark::setBackgroundTaskScheduler(reminders);
    }

    QQuickStyle::setStyle(QStringLiteral("Material"));
    tidemark::tideMarkApp tideMark;
    QQmlApplicationEngine engine;
    if (!tideMark.launch(engine)) {
        return 1;
    }
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    QObject::connect(&instance, &tidemark::SingleInstance::urlOpened, tideMark.haptics(),
                     &tidemark::Haptics::impact);
    if (window) {
        // Qt's Wayland platform (6.4 included) reads XDG_ACTIVATION_TOKEN at each
        // requestActivate(), activates with it and clears it: the later start's token goes
        // there first. On X11 the window manager decides from the request alone.
        QObject::connect(&instance, &tidemark::SingleInstance::activateRequested, window,
                         [window](const QString& token) {
                             if (!token.isEmpty()) {
                                 qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
                             }
                             window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
                             window->show();
                             window->raise();
                             window->requestActivate();
                         });
    }
    if (!options->url.isEmpty()) {
        tideMark.haptics()->impact();
    }
    // A tapped reminder reaches the delegate the launch installed (none with the master switch
    // off at launch), whether it started this process or came to the running one.
    if (reminders) {
        QObject::connect(&instance, &tidemark::SingleInstance::notificationResponded, &app,
                         [reminders](const QString& identifier) {
                             reminders->deliverResponse(identifier.toStdString());
                         });
        if (!options->notificationResponse.isEmpty()) {
            reminders->deliverResponse(options->notificationResponse.toStdString());
        }
    }
    if (window && !options->screenshotDir.isEmpty()) {
        const QString folder = options->screenshotDir;
        QObject::connect(
            window, &QQuickWindow::frameSwapped, &app,
            [window, folder] {
                tidemark::savePagePictures(window, folder, [folder](bool saved) {
                    if (!saved) {
                        std::fprintf(stderr, "Could not save the pictures to %s\n",
                                     qPrintable(folder));
                    }
                    QCoreApplication::exit(saved ? 0 : 1);
                });
            },
            Qt::SingleShotConnection);
    } else if (window && !options->screenshotPath.isEmpty()) {
        // Give the first appearance's queued work a moment to land before the picture is taken.
        const QString path = options->screenshotPath;
        QObject::connect(
            window, &QQuickWindow::frameSwapped, &app,
            [window, path] {
                QTimer::singleShot(500, window, [window, path] {
                    const bool saved = window->grabWindow().save(path);
                    if (!saved) {
                        std::fprintf(stderr, "Could not save the picture to %s\n",
                                     qPrintable(path));
                    }
                    QCoreApplication::exit(saved ? 0 : 1);
                });
            },
            Qt::SingleShotConnection);
    } else if (window && options->quitAfterFirstFrame) {
        QObject::connect(
            window, &QQuickWindow::frameSwapped, &app,
            [] { QTimer::singleShot(200, qApp, &QCoreApplication::quit); },
            Qt::SingleShotConnection);
    }
    return QGuiApplication::exec();
}
