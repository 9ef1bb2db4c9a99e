#include "agent/ReminderAgent.h"

#include "notifications/notiFunc.h"
#include "platform/linux/LinuxNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <QProcess>
#include <QSocketNotifier>
#include <QVariantMap>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <limits>
#include <sys/timerfd.h>
#include <unistd.h>

namespace tidemark {

Q_LOGGING_CATEGORY(lcAgent, "tidemark.agent")

namespace {

// A call to the notification server waits for its answer however long that takes: the server
// may well show a reminder after any timeout, so no answer is never taken for "not shown". The
// calls end with an error only when the server leaves the bus or refuses them.
constexpr int kWaitForTheAnswer = std::numeric_limits<int>::max(); // libdbus: no timeout
const char* const kNotificationsPath = "/org/freedesktop/Notifications";
const char* const kNotificationsInterface = "org.freedesktop.Notifications";
const char* const kDesktopEntry = "org.tidemark.TideMark";

QDBusMessage serverCall(const QString& method) {
    return QDBusMessage::createMethodCall(QString::fromLatin1(kNotificationsBusName),
                                          QString::fromLatin1(kNotificationsPath),
                                          QString::fromLatin1(kNotificationsInterface), method);
}

/// A filing of a request: the identifier alone would also name a request filed again meanwhile.
QString filingKey(const PendingRequest& p) {
    return QString::fromStdString(p.request.identifier) + QLatin1Char('\n') +
           QString::number(p.filed);
}

/// Errors that mean that no server is there to take the call: it is not on the bus or could not
/// be started.
bool noServer(const QDBusError::ErrorType error) {
    return error == QDBusError::ServiceUnknown || error == QDBusError::NoServer ||
           error == QDBusError::Disconnected;
}

/// Errors that mean only that the answer did not come: the server left the bus while it had
/// the call, or the bus gave up waiting.
bool noAnswer(const QDBusError::ErrorType error) {
    return error == QDBusError::NoReply || error == QDBusError::Timeout ||
           error == QDBusError::TimedOut;
}

} // namespace

QVariantMap reminderHints(const NotificationRequest& request, const QStringList& capabilities) {
    QVariantMap hints;
    hints.insert(QStringLiteral("urgency"),
                 QVariant::fromValue<uchar>(request.timeSensitive ? 2 : 1));
    hints.insert(QStringLiteral("desktop-entry"), QString::fromLatin1(kDesktopEntry));
    if (request.sound && capabilities.contains(QStringLiteral("sound"))) {
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    }
    return hints;
}

ReminderAgent::ReminderAgent(std::filesystem::path file, QObject* parent)
    : QObject(parent), path_(std::move(file)) {}

ReminderAgent::~ReminderAgent() {
    if (timerFd_ >= 0) {
        ::close(timerFd_);
    }
}

bool ReminderAgent::start(QString* error) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()) {
        *error = QStringLiteral("No session bus: reminders need one to be shown");
        return false;
    }
    const auto claimed = bus.interface()->registerService(
        QString::fromLatin1(kAgentBusName), QDBusConnectionInterface::DontQueueService,
        QDBusConnectionInterface::DontAllowReplacement);
    if (!claimed.isValid() || claimed.value() != QDBusConnectionInterface::ServiceRegistered) {
        *error = QStringLiteral("Another reminder agent runs in this session");
        return false;
    }
    try {
        requests_ = std::make_unique<PendingRequests>(path_);
    } catch (const PendingRequestsError& e) {
        *error = QString::fromStdString(e.what());
        return false;
    }
    // The background refresh plans through the notification centre of this process; its changes
    // need no message, the agent sets its own timer when the refresh is done.
    center_ = std::make_shared<LinuxNotificationCenter>(path_, nullptr);
    setNotificationCenter(center_);
    setBackgroundTaskScheduler(center_);

    bus.registerObject(QString::fromLatin1(kAgentObjectPath), this,
                       QDBusConnection::ExportScriptableSlots);
    bus.connect(QString::fromLatin1(kNotificationsBusName), QString::fromLatin1(kNotificationsPath),
                QString::fromLatin1(kNotificationsInterface), QStringLiteral("ActionInvoked"), this,
                SLOT(onActionInvoked(uint, QString)));
    bus.connect(QString::fromLatin1(kNotificationsBusName), QString::fromLatin1(kNotificationsPath),
                QString::fromLatin1(kNotificationsInterface), QStringLiteral("NotificationClosed"),
                this, SLOT(onNotificationClosed(uint, uint)));
    // The agent belongs to its session: when the bus goes, so does the agent.
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                QCoreApplication::instance(), SLOT(quit()));
    // Reminders that found no server wait for one to appear. A new server may play sounds
    // where the last one could not, or the other way round.
    serverWatcher_ = new QDBusServiceWatcher(QString::fromLatin1(kNotificationsBusName), bus,
                                             QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(serverWatcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                ++server_;
                capabilities_.reset();
                askingCapabilities_ = false;
                if (!newOwner.isEmpty()) {
                    wake();
                }
            });

    // A wall-clock timer: it fires at the due moment even after a suspend, and a change of the
    // system clock cancels it (read fails with ECANCELED) so that it is set again.
    timerFd_ = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (timerFd_ < 0) {
        *error = QStringLiteral("Can't create a timer: %1").arg(qt_error_string(errno));
        return false;
    }
    timerNotifier_ = new QSocketNotifier(timerFd_, QSocketNotifier::Read, this);
    connect(timerNotifier_, &QSocketNotifier::activated, this, [this] {
        std::uint64_t expirations = 0;
        const auto n = ::read(timerFd_, &expirations, sizeof expirations);
        if (n < 0 && errno == ECANCELED) {
            qCInfo(lcAgent) << "the system clock changed; setting the timer again";
        } else {
            ++timerWakes_;
            qCDebug(lcAgent) << "timer woke" << timerWakes_;
        }
        wake();
    });
    wake();
    return true;
}

void ReminderAgent::Reschedule() {
    wake();
}

void ReminderAgent::wake() {
    const double now = wallClockNow();
    std::vector<BackgroundTaskRequest> refreshes;
    try {
        refreshes = requests_->takeDueBackgroundTasks(now);
    } catch (const PendingRequestsError& e) {
        qCWarning(lcAgent) << e.what();
    }
    if (!refreshes.empty()) {
        // A new plan leaves the requests that are due already.
        qCInfo(lcAgent) << "background refresh";
        runBackgroundRefresh();
    }
    // Without a notification server the due reminders stay in the file; the server's arrival
    // on the bus wakes the agent again. The queue is read anew, so that requests the app has
    // removed meanwhile are not sent.
    queue_.clear();
    if (notificationServerAvailable(QDBusConnection::sessionBus())) {
        try {
            for (auto& request : requests_->due(now)) {
                if (!inFlight_.contains(filingKey(request))) {
                    queue_.push_back(std::move(request));
                }
            }
        } catch (const PendingRequestsError& e) {
            qCWarning(lcAgent) << e.what();
        }
    }
    pump();
    arm();
}

void ReminderAgent::pump() {
    while (!queue_.empty() && waiting_ < kWindow) {
        if (queue_.front().request.sound && !capabilities_) {
            askCapabilities(); // sending goes on with the answer
            return;
        }
        send(queue_.front());
        queue_.pop_front();
    }
}

void ReminderAgent::askCapabilities() {
    if (askingCapabilities_) {
        return;
    }
    askingCapabilities_ = true;
    auto* call = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(serverCall(QStringLiteral("GetCapabilities")),
                                                kWaitForTheAnswer),
        this);
    connect(call, &QDBusPendingCallWatcher::finished, this,
            [this, server = server_](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (server != server_) {
                    return; // the answer of a server that has gone
                }
                const QDBusMessage reply = finished->reply();
                askingCapabilities_ = false;
                capabilities_ =
                    reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                        ? reply.arguments().first().toStringList()
                        : QStringList();
                pump();
            });
}

void ReminderAgent::send(const PendingRequest& due) {
    const NotificationRequest& r = due.request;
    auto call = serverCall(QStringLiteral("Notify"));
    call << qtTrId("appDisplayName") << uint(0) << QString::fromLatin1(kDesktopEntry)
         << QString::fromStdString(r.title) << QString::fromStdString(r.subtitle)
         << QStringList{QStringLiteral("default"), qtTrId("reminderOpenActionString")}
         << reminderHints(r, capabilities_.value_or(QStringList())) << int(-1);
    inFlight_.insert(filingKey(due));
    ++waiting_;
    auto* pending = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, kWaitForTheAnswer), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this, due, server = server_](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                answered(due, server, finished->reply());
            });
}

void ReminderAgent::answered(const PendingRequest& due, int server, const QDBusMessage& reply) {
    const QString identifier = QString::fromStdString(due.request.identifier);
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
        const uint id = reply.arguments().first().toUInt();
        shown_.insert(id, identifier);
        qCInfo(lcAgent) << "delivered" << identifier << "as" << id;
        // The answers that have arrived meanwhile are removed together, once the event loop
        // has handed them all over: one write of the file for many reminders.
        delivered_.push_back(due);
        if (delivered_.size() == 1) {
            QMetaObject::invokeMethod(this, &ReminderAgent::settle, Qt::QueuedConnection);
        }
        return;
    }
    --waiting_;
    const QDBusError error(reply);
    const auto bus = QDBusConnection::sessionBus();
    const bool serverLeft =
        server != server_ ||
        !bus.interface()->isServiceRegistered(QString::fromLatin1(kNotificationsBusName)).value();
    if (noAnswer(error.type()) && !serverLeft) {
        // The server still has the call and may show it yet: this agent does not send it again
        // (it stays in the file, marked, for an agent that comes after this one).
        qCWarning(lcAgent) << "no answer from the notification server for" << identifier
                           << error.message();
        pump();
        return;
    }
    // Not shown (refused, or no server took it): it stays in the file, due, for the next wake.
    inFlight_.remove(filingKey(due));
    qCWarning(lcAgent) << "the notification server did not take" << identifier << error.name()
                       << error.message();
    if (noServer(error.type()) || serverLeft) {
        queue_.clear(); // everything waits for a server to appear
    }
    pump();
}

void ReminderAgent::settle() {
    try {
        requests_->removeDelivered(delivered_);
        for (const auto& request : delivered_) {
            inFlight_.remove(filingKey(request));
        }
    } catch (const PendingRequestsError& e) {
        // Still in the file, and still marked: this agent does not send them again, a later one
        // shows them once more rather than lose them.
        qCWarning(lcAgent) << e.what();
    }
    waiting_ -= static_cast<int>(delivered_.size());
    delivered_.clear();
    pump();
}

void ReminderAgent::arm() {
    std::optional<double> next;
    try {
        // Requests that are already due are waiting for a server, not for the clock.
        next = requests_->nextWakeAfter(wallClockNow());
    } catch (const PendingRequestsError& e) {
        qCWarning(lcAgent) << e.what();
    }
    itimerspec wakeAt{};
    if (next) {
        double whole = 0;
        const double fraction = std::modf(*next, &whole);
        wakeAt.it_value.tv_sec = static_cast<time_t>(whole);
        wakeAt.it_value.tv_nsec = static_cast<long>(fraction * 1e9);
        if (wakeAt.it_value.tv_sec == 0 && wakeAt.it_value.tv_nsec == 0) {
            wakeAt.it_value.tv_nsec = 1; // zero would disarm
        }
    }
    if (timerfd_settime(timerFd_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &wakeAt, nullptr) !=
        0) {
        qCWarning(lcAgent) << "can't set the timer:" << qt_error_string(errno);
    }
    if (next) {
        qCDebug(lcAgent) << "next wake in" << (*next - wallClockNow()) << "s";
    } else {
        qCDebug(lcAgent) << "nothing pending";
    }
}

void ReminderAgent::onActionInvoked(uint notificationId, const QString& actionKey) {
    const auto it = shown_.constFind(notificationId);
    if (it == shown_.constEnd() || actionKey != QLatin1String("default")) {
        return;
    }
    openApp(it.value());
}

void ReminderAgent::onNotificationClosed(uint notificationId, uint) {
    shown_.remove(notificationId);
}

void ReminderAgent::openApp(const QString& requestIdentifier) {
    // The app hands the identifier to its running instance if there is one.
    const QString program = companionProgram(QStringLiteral("tidemark"));
    qCInfo(lcAgent) << "opening the app for" << requestIdentifier;
    if (!QProcess::startDetached(program,
                                 {QStringLiteral("--notification-response"), requestIdentifier})) {
        qCWarning(lcAgent) << "could not start" << program;
    }
}

} // namespace tidemark
