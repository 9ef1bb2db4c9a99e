#include "platform/linux/Haptics.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QVariantMap>

namespace tidemark {

Haptics::Haptics(QObject* parent) : QObject(parent) {}

Haptics* Haptics::instance() {
    static Haptics haptics;
    return &haptics;
}

void Haptics::impact() {
    ++requests_;
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    auto call = QDBusMessage::createMethodCall(
        QString::fromLatin1(kFeedbackService), QString::fromLatin1(kFeedbackPath),
        QString::fromLatin1(kFeedbackInterface), QStringLiteral("TriggerFeedback"));
    QString appId = QGuiApplication::desktopFileName();
    if (appId.isEmpty()) {
        appId = QStringLiteral("org.tidemark.TideMark");
    }
    call << appId << QStringLiteral("button-pressed") << QVariantMap{} << -1;
    // No activation: where feedbackd doesn't run, the call fails quietly.
    call.setAutoStartService(false);
    bus.asyncCall(call);
}

} // namespace tidemark
