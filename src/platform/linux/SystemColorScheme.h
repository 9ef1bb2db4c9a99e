// Whether the desktop prefers a dark look, kept up to date while the app runs.
//
// The desktop's settings portal (org.freedesktop.portal.Settings on the session bus, namespace
// "org.freedesktop.appearance", key "color-scheme") is asked first and followed through its
// SettingChanged signal. Where no portal answers, or the portal says "no preference", the
// application palette decides: a window colour darker than its text means a dark desktop, and a
// palette change is followed too. The portal is only ever called asynchronously, so a missing or
// slow portal never holds up the start; until it answers, the palette's answer stands.
//
// The class knows nothing of the app's own theme setting: the app follows it only while that
// setting is "Default".
#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <optional>

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace tidemark {

inline constexpr const char* kPortalBusName = "org.freedesktop.portal.Desktop";
inline constexpr const char* kPortalObjectPath = "/org/freedesktop/portal/desktop";
inline constexpr const char* kPortalSettingsInterface = "org.freedesktop.portal.Settings";
inline constexpr const char* kAppearanceNamespace = "org.freedesktop.appearance";
inline constexpr const char* kColorSchemeKey = "color-scheme";

/// The portal's values for "color-scheme"; anything else reads as no preference.
enum class PortalColorScheme : uint { noPreference = 0, preferDark = 1, preferLight = 2 };

class SystemColorScheme : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged)
    /// "dark" or "light".
    Q_PROPERTY(QString scheme READ scheme NOTIFY darkChanged)

public:
    explicit SystemColorScheme(QDBusConnection bus = QDBusConnection::sessionBus(),
                               QObject* parent = nullptr);

    bool dark() const { return dark_; }
    QString scheme() const { return dark_ ? QStringLiteral("dark") : QStringLiteral("light"); }

signals:
    void darkChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onSettingChanged(const QString& nameSpace, const QString& key, const QDBusVariant& value);

private:
    /// Asks the portal; `oneValueMethod` false uses the older Read, whose answer is wrapped twice.
    void readFromPortal(bool oneValueMethod = true);
    void onReadFinished(QDBusPendingCallWatcher* call, bool oneValueMethod);
    void setPortalValue(std::optional<PortalColorScheme> value);
    void update();

    QDBusConnection bus_;
    QDBusServiceWatcher* portalWatcher_ = nullptr;
    /// The portal's last answer; empty while none has come (or the portal went away).
    std::optional<PortalColorScheme> portal_;
    bool dark_ = false;
};

/// The palette's answer: a window colour darker than the window's text.
bool paletteIsDark();

} // namespace tidemark
