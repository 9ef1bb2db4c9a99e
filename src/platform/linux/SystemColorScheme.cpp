#include "platform/linux/SystemColorScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QPalette>

namespace tidemark {

Q_LOGGING_CATEGORY(lcAppearance, "tidemark.appearance")

namespace {

/// Long enough for the bus to start the portal and its backend, short enough that a hung
/// portal is given up on while the palette's answer stands.
constexpr int kPortalTimeoutMs = 5000;

/// The value inside any number of variant wrappings (Read wraps the value twice, ReadOne and
/// SettingChanged once).
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

PortalColorScheme portalColorScheme(const QVariant& value) {
    const QVariant v = unwrapped(value);
    bool ok = false;
    const uint raw = v.toUInt(&ok);
    if (!ok || raw > static_cast<uint>(PortalColorScheme::preferLight)) {
        return PortalColorScheme::noPreference;
    }
    return static_cast<PortalColorScheme>(raw);
}

} // namespace

bool paletteIsDark() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        return false;
    }
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

SystemColorScheme::SystemColorScheme(QDBusConnection bus, QObject* parent)
    : QObject(parent), bus_(std::move(bus)), dark_(paletteIsDark()) {
    if (auto* app = QCoreApplication::instance()) {
        app->installEventFilter(this);
    }
    if (!bus_.isConnected()) {
        return;
    }
    const QString name = QString::fromLatin1(kPortalBusName);
    // Subscribed before the first read, so that no change falls between the two.
    bus_.connect(name, QString::fromLatin1(kPortalObjectPath),
                 QString::fromLatin1(kPortalSettingsInterface), QStringLiteral("SettingChanged"),
                 this, SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    // A portal that starts later, restarts or goes away.
    portalWatcher_ =
        new QDBusServiceWatcher(name, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(portalWatcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                if (newOwner.isEmpty()) {
                    setPortalValue(std::nullopt);
                } else {
                    readFromPortal();
                }
            });
    readFromPortal();
}

void SystemColorScheme::readFromPortal(bool oneValueMethod) {
    auto message = QDBusMessage::createMethodCall(
        QString::fromLatin1(kPortalBusName), QString::fromLatin1(kPortalObjectPath),
        QString::fromLatin1(kPortalSettingsInterface),
        oneValueMethod ? QStringLiteral("ReadOne") : QStringLiteral("Read"));
    message << QString::fromLatin1(kAppearanceNamespace) << QString::fromLatin1(kColorSchemeKey);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, kPortalTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, oneValueMethod](QDBusPendingCallWatcher* call) {
                onReadFinished(call, oneValueMethod);
            });
}

void SystemColorScheme::onReadFinished(QDBusPendingCallWatcher* call, bool oneValueMethod) {
    call->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (reply.isError()) {
        // Portals before version 2 have only Read.
        if (oneValueMethod && reply.error().type() == QDBusError::UnknownMethod) {
            readFromPortal(false);
            return;
        }
        qCDebug(lcAppearance) << "no colour scheme from the settings portal:"
                              << reply.error().message();
        setPortalValue(std::nullopt);
        return;
    }
    setPortalValue(portalColorScheme(reply.argumentAt(0)));
}

void SystemColorScheme::onSettingChanged(const QString& nameSpace, const QString& key,
                                         const QDBusVariant& value) {
    if (nameSpace == QLatin1String(kAppearanceNamespace) && key == QLatin1String(kColorSchemeKey)) {
        setPortalValue(portalColorScheme(QVariant::fromValue(value)));
    }
}

void SystemColorScheme::setPortalValue(std::optional<PortalColorScheme> value) {
    portal_ = value;
    update();
}

bool SystemColorScheme::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange &&
        watched == QCoreApplication::instance()) {
        update();
    }
    return QObject::eventFilter(watched, event);
}

void SystemColorScheme::update() {
    bool dark = false;
    switch (portal_.value_or(PortalColorScheme::noPreference)) {
    case PortalColorScheme::preferDark:
        dark = true;
        break;
    case PortalColorScheme::preferLight:
        dark = false;
        break;
    case PortalColorScheme::noPreference:
        dark = paletteIsDark();
        break;
    }
    if (dark != dark_) {
        dark_ = dark;
        emit darkChanged();
    }
}

} // namespace tidemark
