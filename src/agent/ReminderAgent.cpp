#include "agent/ReminderAgent.h"

#include "notifications/notiFunc.h"
#include "platform/linux/LinuxNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <QProcess>
#include <QSocketNotifier>
#include <QVariantMap>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <sys/timerfd.h>
#include <unistd.h>

namespace tidemark {

Q_LOGGING_CATEGORY(lcAgent, "tidemark.agent")

namespace {

constexpr int kNotifyTimeoutMs = 5000;
const char* const kNotificationsPath = "/org/freedesktop/Notifications";
const char* const kNotificationsInterface = "org.freedesktop.Notifications";
const char* const kDesktopEntry = "org.tidemark.TideMark";

QStringList serverCapabilities(QDBusConnection& bus) {
    auto call = QDBusMessage::createMethodCall(
        QString::fromLatin1(kNotificationsBusName), QString::fromLatin1(kNotificationsPath),
        QString::fromLatin1(kNotificationsInterface), QStringLiteral("GetCapabilities"));
    const auto reply = bus.call(call, QDBus::Block, kNotifyTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return {};
    }
    return reply.arguments().first().toStringList();
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
    // Reminders that found no server wait for one to appear.
    serverWatcher_ = new QDBusServiceWatcher(QString::fromLatin1(kNotificationsBusName), bus,
                                             QDBusServiceWatcher::WatchForRegistration, this);
    connect(serverWatcher_, &QDBusServiceWatcher::serviceRegistered, this, [this] { wake(); });

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
    std::vector<PendingRequest> due;
    std::vector<BackgroundTaskRequest> refreshes;
    // Without a notification server the due reminders stay in the file; the server's arrival
    // on the bus wakes the agent again.
    const bool serverAnswers = notificationServerAvailable(QDBusConnection::sessionBus());
    try {
        if (serverAnswers) {
            due = requests_->takeDue(now);
        }
        refreshes = requests_->takeDueBackgroundTasks(now);
    } catch (const PendingRequestsError& e) {
        qCWarning(lcAgent) << e.what();
    }
    std::vector<PendingRequest> undelivered;
    for (const auto& request : due) {
        if (!deliver(request)) {
            undelivered.push_back(request);
        }
    }
    // A server that went away meanwhile: back into the file, still due, for the next server (or
    // the agent's next start).
    for (const auto& request : undelivered) {
        NotificationRequest again = request.request;
        again.delaySeconds = 0;
        try {
            requests_->add(again, request.fireAt);
        } catch (const PendingRequestsError& e) {
            qCWarning(lcAgent) << e.what();
        }
    }
    if (!refreshes.empty()) {
        qCInfo(lcAgent) << "background refresh";
        runBackgroundRefresh();
    }
    arm();
}

bool ReminderAgent::deliver(const PendingRequest& due) {
    auto bus = QDBusConnection::sessionBus();
    const NotificationRequest& r = due.request;
    const QVariantMap hints = reminderHints(r, r.sound ? serverCapabilities(bus) : QStringList());
    auto call = QDBusMessage::createMethodCall(
        QString::fromLatin1(kNotificationsBusName), QString::fromLatin1(kNotificationsPath),
        QString::fromLatin1(kNotificationsInterface), QStringLiteral("Notify"));
    call << qtTrId("appDisplayName") << uint(0) << QString::fromLatin1(kDesktopEntry)
         << QString::fromStdString(r.title) << QString::fromStdString(r.subtitle)
         << QStringList{QStringLiteral("default"), qtTrId("reminderOpenActionString")} << hints
         << int(-1);
    const auto reply = bus.call(call, QDBus::Block, kNotifyTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        qCWarning(lcAgent) << "no notification server took" << QString::fromStdString(r.identifier)
                           << reply.errorMessage();
        return false;
    }
    const uint id = reply.arguments().first().toUInt();
    shown_.insert(id, QString::fromStdString(r.identifier));
    qCInfo(lcAgent) << "delivered" << QString::fromStdString(r.identifier) << "as" << id;
    return true;
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
