// One app per session: the first start owns the bus name org.tidemark.TideMark; a later start,
// with or without a tidemark: URL, hands its request to the owner and ends. Every hand-over
// brings the running window forward, with the activation token the later start was given (on
// Wayland the compositor only lets a window take the focus with such a token). Without a session
// bus every start runs on its own.
#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

namespace tidemark {

inline constexpr const char* kAppBusName = "org.tidemark.TideMark";
inline constexpr const char* kAppObjectPath = "/org/tidemark/TideMark";
inline constexpr const char* kAppInterface = "org.tidemark.TideMark";

class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.tidemark.TideMark")
public:
    enum class Outcome {
        primary,   ///< this process owns the name (or there is no bus): run the app
        handedOver ///< the running instance took the request: end this process
    };

    explicit SingleInstance(QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Claims the name; if another process has it, sends it the activated reminder's identifier,
    /// else `url`, else asks it to show itself, and answers handedOver.
    Outcome claim(const QString& url, const QString& notificationResponse = {});

public slots:
    // Each call ends with the later start's platform data: "activation-token" and
    // "desktop-startup-id", taken from its XDG_ACTIVATION_TOKEN and DESKTOP_STARTUP_ID.

    /// Called over the bus by a second start: bring the window forward.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    /// Called over the bus with the URL a second start was given: bring the window forward.
    Q_SCRIPTABLE void Open(const QString& url, const QVariantMap& platformData);
    /// Called over the bus when a reminder's notification was activated: bring the window
    /// forward and hand the request identifier on.
    Q_SCRIPTABLE void NotificationResponse(const QString& identifier,
                                           const QVariantMap& platformData);

signals:
    /// Every hand-over: the window should come forward, using `activationToken` (empty when
    /// the later start had none).
    void activateRequested(const QString& activationToken);
    void urlOpened(const QString& url);
    void notificationResponded(const QString& identifier);

private:
    bool registered_ = false;
};

} // namespace tidemark
