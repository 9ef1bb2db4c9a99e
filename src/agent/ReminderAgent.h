// The reminder agent: one per session (it owns org.tidemark.TideMark.Agent). It sleeps on one
// wall-clock timer set to the next moment something falls due - a reminder or the background
// refresh - and wakes only then, or when the app says that the requests changed. Due reminders
// go to the session's notification server; activating one starts or raises the app with the
// request's identifier. Reminders that fell due while no agent ran are delivered when it starts;
// reminders that find no notification server wait until one appears on the bus.
//
// A reminder leaves the requests file only once the notification server has answered for it, so
// an agent that dies while delivering loses nothing: the next one sends what was not answered
// (shown twice only if the server had shown it before the answer was recorded, at most kWindow
// reminders). Calls to the server are asynchronous, at most kWindow unsettled at a time, and wait
// for their answer however long it takes: a slow server is never taken for a missing one, and the
// agent keeps serving its own bus calls meanwhile.
#pragma once

#include "notifications/PendingRequests.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <deque>
#include <memory>
#include <optional>

class QDBusMessage;
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

    /// The most reminders sent at one time whose answer is not recorded in the file yet.
    static constexpr int kWindow = 16;

    /// How often the wall-clock timer has woken the agent (for the log and the tests).
    int timerWakes() const { return timerWakes_; }

public slots:
    /// The app changed the requests: read them again and set the timer.
    Q_SCRIPTABLE void Reschedule();

private slots:
    void onActionInvoked(uint notificationId, const QString& actionKey);
    void onNotificationClosed(uint notificationId, uint reason);

private:
    /// Runs a due background refresh, queues what is due and not on its way yet, starts
    /// sending, and sets the timer again.
    void wake();
    /// Sends queued reminders while fewer than kWindow are unsettled.
    void pump();
    void send(const PendingRequest& due);
    /// The answer for `due`, sent to the `server`-th owner of the server name: taken, it leaves
    /// the file; refused or not taken by any server, it stays there to be sent again.
    void answered(const PendingRequest& due, int server, const QDBusMessage& reply);
    /// Removes the reminders the server has taken from the file, all in one transaction, and
    /// frees their places in the window.
    void settle();
    /// Asks the current server once what it can do (whether it plays sounds).
    void askCapabilities();
    void arm();
    void openApp(const QString& requestIdentifier);

    std::filesystem::path path_;
    std::unique_ptr<PendingRequests> requests_;
    std::shared_ptr<LinuxNotificationCenter> center_;
    int timerFd_ = -1;
    QSocketNotifier* timerNotifier_ = nullptr;
    QDBusServiceWatcher* serverWatcher_ = nullptr;
    QHash<uint, QString> shown_;       ///< notification id -> request identifier
    std::deque<PendingRequest> queue_; ///< due at the last wake, not sent yet
    /// The filings sent and not answered yet, or whose answer never came from a server that is
    /// still there: not to be sent again. They belong to this process: the next agent sends
    /// again whatever this one left unanswered in the file.
    QSet<QString> inFlight_;
    /// Taken by the server, still in the file until the next settle.
    std::vector<PendingRequest> delivered_;
    int waiting_ = 0;                         ///< reminders sent whose answer is not settled yet
    std::optional<QStringList> capabilities_; ///< of the current server, once it answered
    int server_ = 0;                          ///< counts the owners the server name has had
    bool askingCapabilities_ = false;
    int timerWakes_ = 0;
};

} // namespace tidemark
