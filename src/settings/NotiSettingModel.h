// The reminders settings page: the master switch of all reminders, whether the system lets the
// app notify, and the way to the desktop's own notification settings.
#pragma once

#include "notifications/notiFunc.h"
#include "records/Observation.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace tidemark {

/// The command that opens the desktop's notification settings, for the desktops listed in
/// `currentDesktop` (XDG_CURRENT_DESKTOP, colon-separated) and the programs `has` finds; empty
/// when this desktop has no such page.
QStringList systemNotificationSettingsCommand(const QString& currentDesktop,
                                              const std::function<bool(const QString&)>& has);

class NotiSettingModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The master switch. Turning it on without permission to notify turns it back off.
    Q_PROPERTY(bool switchOn READ switchOn WRITE setSwitchOn NOTIFY changed)
    /// The last answer the system gave about notifying (a mirror, refreshed on appearance).
    Q_PROPERTY(bool authorized READ authorized NOTIFY changed)
    Q_PROPERTY(bool systemSettingsAvailable READ systemSettingsAvailable CONSTANT)
public:
    explicit NotiSettingModel(QObject* parent = nullptr);

    bool switchOn() const;
    void setSwitchOn(bool on);
    bool authorized() const;
    bool systemSettingsAvailable() const;

    /// The page came on screen: asks the system again.
    Q_INVOKABLE void appeared();
    /// Starts the desktop's notification settings a moment later, on the application's behalf,
    /// so the caller may leave its page (and drop this model) at once. False when this desktop
    /// has no such page.
    Q_INVOKABLE bool openSystemSettings();

signals:
    void changed();

private:
    notiFunc noti_;
    ObservationToken switchToken_, authorizationToken_;
    QStringList command_;
};

} // namespace tidemark
