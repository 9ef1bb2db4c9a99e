#include "settings/NotiSettingModel.h"

#include "platform/linux/QtDispatcher.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

namespace tidemark {

namespace {

Q_LOGGING_CATEGORY(lcSettings, "tidemark.settings")

/// Long enough for a page's pop transition to finish before another window takes the focus.
constexpr int kOpenDelayMs = 250;

} // namespace

QStringList systemNotificationSettingsCommand(const QString& currentDesktop,
                                              const std::function<bool(const QString&)>& has) {
    // Each desktop's notification page, the newer program first.
    const QList<QPair<QString, QList<QStringList>>> pages = {
        {QStringLiteral("KDE"),
         {{QStringLiteral("systemsettings"), QStringLiteral("kcm_notifications")},
          {QStringLiteral("kcmshell6"), QStringLiteral("kcm_notifications")},
          {QStringLiteral("kcmshell5"), QStringLiteral("kcm_notifications")}}},
        {QStringLiteral("GNOME"),
         {{QStringLiteral("gnome-control-center"), QStringLiteral("notifications")}}},
        {QStringLiteral("Phosh"),
         {{QStringLiteral("gnome-control-center"), QStringLiteral("notifications")}}},
        {QStringLiteral("XFCE"), {{QStringLiteral("xfce4-notifyd-config")}}},
    };
    for (const auto& desktop : currentDesktop.split(':', Qt::SkipEmptyParts)) {
        for (const auto& [name, commands] : pages) {
            if (desktop.compare(name, Qt::CaseInsensitive) != 0) {
                continue;
            }
            for (const auto& command : commands) {
                if (has(command.first())) {
                    return command;
                }
            }
        }
    }
    return {};
}

NotiSettingModel::NotiSettingModel(QObject* parent) : QObject(parent) {
    switchToken_ =
        noti_.switchOfNotiOpenOrNotForAllEvent.observe([this] { emit changed(); }, queuedOn(this));
    authorizationToken_ =
        noti_.notiAuthorizationForAppStatus.observe([this] { emit changed(); }, queuedOn(this));
    command_ = systemNotificationSettingsCommand(
        qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
        [](const QString& program) { return !QStandardPaths::findExecutable(program).isEmpty(); });
}

bool NotiSettingModel::switchOn() const {
    return noti_.switchOfNotiOpenOrNotForAllEvent.get();
}

bool NotiSettingModel::authorized() const {
    return noti_.notiAuthorizationForAppStatus.get();
}

bool NotiSettingModel::systemSettingsAvailable() const {
    return !command_.isEmpty();
}

void NotiSettingModel::setSwitchOn(bool on) {
    if (on == switchOn()) {
        return;
    }
    noti_.switchOfNotiOpenOrNotForAllEvent.set(on);
    if (!on) {
        // Off: nothing stays pending.
        notiFunc().removeAllNotiRequests();
    } else {
        // On: ask the system again, but decide on the permission as it stood before the answer;
        // without it the switch goes back off, with it everything is planned (in place of what
        // is pending, like every planning run, although turning off removed it already).
        const bool allowed = authorized();
        notiFunc().refreshNotiAuthorizationStatus();
        if (!allowed) {
            noti_.switchOfNotiOpenOrNotForAllEvent.set(false);
        } else {
            notiFunc().replanAllNotiRequests();
        }
    }
    emit changed();
}

void NotiSettingModel::appeared() {
    notiFunc().refreshNotiAuthorizationStatus();
    emit changed();
}

bool NotiSettingModel::openSystemSettings() {
    if (command_.isEmpty()) {
        return false;
    }
    // The caller usually leaves its page right after, and this model goes with it: the start
    // belongs to the application, so it happens whatever became of the page meanwhile.
    QTimer::singleShot(kOpenDelayMs, qApp, [command = command_] {
        if (!QProcess::startDetached(command.first(), command.mid(1))) {
            qCWarning(lcSettings) << "Could not start" << command.join(QLatin1Char(' '));
        }
    });
    return true;
}

} // namespace tidemark
