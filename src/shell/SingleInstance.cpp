#include "shell/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace tidemark {

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
    const auto answer = bus.call(call, QDBus::Block, 5000);
    // If the owner doesn't answer, run on our own rather than not at all.
    return answer.type() == QDBusMessage::ReplyMessage ? Outcome::handedOver : Outcome::primary;
}

void SingleInstance::Activate() {
    emit activateRequested();
}

void SingleInstance::NotificationResponse(const QString& identifier) {
    emit activateRequested();
    emit notificationResponded(identifier);
}

void SingleInstance::Open(const QString& url) {
    // The URL isn't parsed: opening by URL only gives the haptic.
    emit urlOpened(url);
}

} // namespace tidemark
