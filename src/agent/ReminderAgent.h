// The reminder agent: one per session (it owns org.tidemark.TideMark.Agent). It sleeps on one
// wall-clock timer set to the next moment something falls due - a reminder or the background
// refresh - and wakes only then, or when the app says that the requests changed. Due reminders
// go to the session's notification server; activating one starts or raises the app with the
// request's identifier. Reminders that fell due while no agent ran are delivered when it starts;
// reminders that find no notification server wait until one appears on the bus.
#pragma once

#include "notifications/PendingRequests.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <memory>

class QSocketNotifier;
class QDBusServiceWatcher;

namespace tidemark {

class LinuxNotificationCenter;

/// The hints a reminder is shown with: urgency critical when it is time sensitive (else normal),
/// the app's desktop entry, and a sound where it asks for one and the server can play it.
QVariantMap reminderHints(const NotificationRequest& request, const QStringList& capabilities);

class ReminderAgent : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.tidemark.TideMark.Agent")
public:
    explicit ReminderAgent(std::filesystem::path file = PendingRequests::defaultPath(),
                           QObject* parent = nullptr);
    ~ReminderAgent() override;

    /// Claims the agent's bus name and starts work. False (with `error` set) when another agent
    /// has the name, there is no session bus, or the requests file can't be opened.
    bool start(QString* error);

    /// How often the wall-clock timer has woken the agent (for the log and the tests).
    int timerWakes() const { return timerWakes_; }

public slots:
    /// The app changed the requests: read them again and set the timer.
    Q_SCRIPTABLE void Reschedule();

private slots:
    void onActionInvoked(uint notificationId, const QString& actionKey);
    void onNotificationClosed(uint notificationId, uint reason);

private:
    /// Delivers what is due, runs a due background refresh, and sets the timer again.
    void wake();
    /// Sends one reminder to the notification server; false when no server took it.
    bool deliver(const PendingRequest& due);
    void arm();
    void openApp(const QString& requestIdentifier);

    std::filesystem::path path_;
    std::unique_ptr<PendingRequests> requests_;
    std::shared_ptr<LinuxNotificationCenter> center_;
    int timerFd_ = -1;
    QSocketNotifier* timerNotifier_ = nullptr;
    QDBusServiceWatcher* serverWatcher_ = nullptr;
    QHash<uint, QString> shown_; ///< notification id -> request identifier
    int timerWakes_ = 0;
};

} // namespace tidemark
