#include "platform/linux/LinuxNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>
#include <atomic>

namespace tidemark {

Q_LOGGING_CATEGORY(lcNotifications, "tidemark.notifications")

namespace {

constexpr int kBusTimeoutMs = 3000;

} // namespace

bool notificationServerAvailable(const QDBusConnection& bus) {
    if (!bus.isConnected() || !bus.interface()) {
        return false;
    }
    const QString name = QString::fromLatin1(kNotificationsBusName);
    const auto owned = bus.interface()->isServiceRegistered(name);
    if (owned.isValid() && owned.value()) {
        return true;
    }
    const auto activatable = bus.interface()->activatableServiceNames();
    return activatable.isValid() && activatable.value().contains(name);
}

QString companionProgram(const QString& name) {
    const QByteArray variable =
        name == QLatin1String("tidemark") ? "TIDEMARK_APP_PATH" : "TIDEMARK_AGENT_PATH";
    const QString fromEnvironment = qEnvironmentVariable(variable.constData());
    if (!fromEnvironment.isEmpty()) {
        return fromEnvironment;
    }
    // Installed, the programs sit side by side; in the build tree the app is in src/shell and
    // the agent in src/agent.
    const QDir here(QCoreApplication::applicationDirPath());
    const QString buildFolder =
        name == QLatin1String("tidemark") ? QStringLiteral("shell") : QStringLiteral("agent");
    for (const QString& candidate :
         {here.filePath(name), here.filePath(QStringLiteral("../%1/%2").arg(buildFolder, name))}) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isExecutable()) {
            return info.canonicalFilePath();
        }
    }
    return name;
}

void wakeAgent() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()) {
        return;
    }
    const QString name = QString::fromLatin1(kAgentBusName);
    const auto owned = bus.interface()->isServiceRegistered(name);
    const auto activatable = bus.interface()->activatableServiceNames();
    if ((owned.isValid() && owned.value()) ||
        (activatable.isValid() && activatable.value().contains(name))) {
        // A call to an activatable name starts the agent first.
        auto call = QDBusMessage::createMethodCall(name, QString::fromLatin1(kAgentObjectPath),
                                                   QString::fromLatin1(kAgentInterface),
                                                   QStringLiteral("Reschedule"));
        bus.call(call, QDBus::NoBlock);
        return;
    }
    // Not installed as a D-Bus service (run from the build tree): start it; it reads the
    // requests when it starts. A second agent started at the same time finds the name taken
    // and ends.
    const QString program = companionProgram(QStringLiteral("tidemark-agent"));
    if (!QProcess::startDetached(program, {})) {
        qCWarning(lcNotifications)
            << "Could not start" << program << "- reminders are delivered once it runs";
    }
}

void scheduleAgentWake() {
    static std::atomic<bool> scheduled{false};
    auto* app = QCoreApplication::instance();
    if (!app) {
        wakeAgent();
        return;
    }
    if (!scheduled.exchange(true)) {
        QMetaObject::invokeMethod(
            app,
            [] {
                scheduled = false;
                wakeAgent();
            },
            Qt::QueuedConnection);
    }
}

LinuxNotificationCenter::LinuxNotificationCenter(std::filesystem::path file,
                                                 std::function<void()> afterChange)
    : path_(std::move(file)), afterChange_(std::move(afterChange)) {}

LinuxNotificationCenter::~LinuxNotificationCenter() = default;

PendingRequests* LinuxNotificationCenter::file() const {
    std::lock_guard lock(mutex_);
    if (!file_) {
        try {
            file_ = std::make_unique<PendingRequests>(path_);
        } catch (const PendingRequestsError& error) {
            qCWarning(lcNotifications) << error.what();
            return nullptr;
        }
    }
    return file_.get();
}

std::optional<std::string>
LinuxNotificationCenter::modify(const std::function<void(PendingRequests&)>& work) {
    auto* requests = file();
    if (!requests) {
        return std::string("The reminders file can't be opened: ") + path_.string();
    }
    try {
        work(*requests);
    } catch (const PendingRequestsError& error) {
        qCWarning(lcNotifications) << error.what();
        return std::string(error.what());
    }
    if (afterChange_) {
        afterChange_();
    }
    return std::nullopt;
}

void LinuxNotificationCenter::requestAuthorization(
    std::function<void(bool, std::optional<std::string>)> done) {
    if (auto* requests = file()) {
        try {
            requests->setAuthorizationRequested();
        } catch (const PendingRequestsError& error) {
            qCWarning(lcNotifications) << error.what();
        }
    }
    if (notificationServerAvailable(QDBusConnection::sessionBus())) {
        done(true, std::nullopt);
    } else {
        done(false, std::string("No notification server answers on the session bus"));
    }
}

void LinuxNotificationCenter::authorizationStatus(std::function<void(AuthorizationStatus)> done) {
    auto* requests = file();
    bool asked = false;
    if (requests) {
        try {
            asked = requests->authorizationRequested();
        } catch (const PendingRequestsError& error) {
            qCWarning(lcNotifications) << error.what();
        }
    }
    if (!asked) {
        done(AuthorizationStatus::notDetermined);
        return;
    }
    done(notificationServerAvailable(QDBusConnection::sessionBus())
             ? AuthorizationStatus::authorized
             : AuthorizationStatus::denied);
}

void LinuxNotificationCenter::add(const NotificationRequest& request,
                                  std::function<void(std::optional<std::string>)> done) {
    auto error = modify([&](PendingRequests& r) { r.add(request, wallClockNow()); });
    if (done) {
        done(std::move(error));
    }
}

void LinuxNotificationCenter::removePending(const std::vector<std::string>& identifiers) {
    modify([&](PendingRequests& r) { r.remove(identifiers); });
}

void LinuxNotificationCenter::removeAllPending() {
    modify([](PendingRequests& r) { r.removeAll(); });
}

void LinuxNotificationCenter::replacePending(
    const std::function<std::vector<NotificationRequest>()>& plan) {
    modify([&](PendingRequests& r) { r.replaceAll(plan); });
}

void LinuxNotificationCenter::pending(std::function<void(std::vector<NotificationRequest>)> done) {
    std::vector<NotificationRequest> out;
    if (auto* requests = file()) {
        try {
            for (auto& p : requests->pending()) {
                out.push_back(std::move(p.request));
            }
        } catch (const PendingRequestsError& error) {
            qCWarning(lcNotifications) << error.what();
        }
    }
    done(std::move(out));
}

void LinuxNotificationCenter::setDelegate(NotificationCenterDelegate* delegate) {
    delegate_ = delegate;
}

NotificationCenterDelegate* LinuxNotificationCenter::delegate() const {
    return delegate_;
}

BackgroundRefreshStatus LinuxNotificationCenter::backgroundRefreshStatus() const {
    return QDBusConnection::sessionBus().isConnected() ? BackgroundRefreshStatus::available
                                                       : BackgroundRefreshStatus::restricted;
}

std::optional<std::string> LinuxNotificationCenter::submit(const BackgroundTaskRequest& request) {
    return modify([&](PendingRequests& r) { r.submitBackgroundTask(request); });
}

void LinuxNotificationCenter::cancelAll() {
    modify([](PendingRequests& r) { r.cancelAllBackgroundTasks(); });
}

std::vector<BackgroundTaskRequest> LinuxNotificationCenter::pendingRequests() const {
    if (auto* requests = file()) {
        try {
            return requests->backgroundTasks();
        } catch (const PendingRequestsError& error) {
            qCWarning(lcNotifications) << error.what();
        }
    }
    return {};
}

void LinuxNotificationCenter::deliverResponse(const std::string& identifier) {
    if (delegate_) {
        delegate_->didReceiveResponse(identifier);
    }
}

} // namespace tidemark
