#include "shell/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <utility>

namespace tidemark {

namespace {

/// This process's activation token and startup id, as a launcher gave them.
QVariantMap ownPlatformData() {
    QVariantMap data;
    for (const auto& [key, variable] : {std::pair{"activation-token", "XDG_ACTIVATION_TOKEN"},
                                        std::pair{"desktop-startup-id", "DESKTOP_STARTUP_ID"}}) {
        if (const QString value = qEnvironmentVariable(variable); !value.isEmpty()) {
            data.insert(QString::fromLatin1(key), value);
        }
    }
    return data;
}

/// The token to activate with: launchers on Wayland set both variables, some only the older
/// DESKTOP_STARTUP_ID.
QString activationToken(const QVariantMap& platformData) {
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    return !token.isEmpty() ? token
                            : platformData.value(QStringLiteral("desktop-startup-id")).toString();
}

} // namespace

SingleInstance::SingleInstance(QObject* parent) : QObject(parent) {}

SingleInstance::~SingleInstance() {
    if (registered_) {
        auto bus = QDBusConnection::sessionBus();
        bus.unregisterObject(QString::fromLatin1(kAppObjectPath));
        bus.unregisterService(QString::fromLatin1(kAppBusName));
    }
}

SingleInstance::Outcome SingleInstance::claim(const QString& url,
                                              const QString& notificationResponse) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()) {
        return Outcome::primary;
    }
    const QString name = QString::fromLatin1(kAppBusName);
    const auto reply =
        bus.interface()->registerService(name, QDBusConnectionInterface::DontQueueService,
                                         QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        registered_ = bus.registerObject(QString::fromLatin1(kAppObjectPath), this,
                                         QDBusConnection::ExportScriptableSlots);
        return Outcome::primary;
    }
    const QString method = !notificationResponse.isEmpty() ? QStringLiteral("NotificationResponse")
                           : !url.isEmpty()                ? QStringLiteral("Open")
                                                           : QStringLiteral("Activate");
    auto call = QDBusMessage::createMethodCall(name, QString::fromLatin1(kAppObjectPath),
                                               QString::fromLatin1(kAppInterface), method);
    if (!notificationResponse.isEmpty()) {
        call << notificationResponse;
    } else if (!url.isEmpty()) {
        call << url;
    }
    call << ownPlatformData();
    const auto answer = bus.call(call, QDBus::Block, 5000);
    // If the owner doesn't answer, run on our own rather than not at all.
    return answer.type() == QDBusMessage::ReplyMessage ? Outcome::handedOver : Outcome::primary;
}

void SingleInstance::Activate(const QVariantMap& platformData) {
    emit activateRequested(activationToken(platformData));
}

void SingleInstance::NotificationResponse(const QString& identifier,
                                          const QVariantMap& platformData) {
    emit activateRequested(activationToken(platformData));
    emit notificationResponded(identifier);
}

void SingleInstance::Open(const QString& url, const QVariantMap& platformData) {
    // The URL isn't parsed: opening by URL brings the window forward and gives the haptic.
    emit activateRequested(activationToken(platformData));
    emit urlOpened(url);
}

} // namespace tidemark
