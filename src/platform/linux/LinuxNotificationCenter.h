// The Linux notification centre: requests are kept in the pending-requests file and delivered
// at their time by the tidemark-agent (one per session, reached at org.tidemark.TideMark.Agent),
// which also runs the background refresh. Permission to notify means that a notification server
// answers on the session bus, or can be started there.
#pragma once

#include "notifications/NotificationCenter.h"
#include "notifications/PendingRequests.h"

#include <QDBusConnection>
#include <QString>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>

namespace tidemark {

inline constexpr const char* kAgentBusName = "org.tidemark.TideMark.Agent";
inline constexpr const char* kAgentObjectPath = "/org/tidemark/TideMark/Agent";
inline constexpr const char* kAgentInterface = "org.tidemark.TideMark.Agent";
inline constexpr const char* kNotificationsBusName = "org.freedesktop.Notifications";

/// True when org.freedesktop.Notifications has an owner on `bus` or can be activated there.
bool notificationServerAvailable(const QDBusConnection& bus);

/// Asks the running agent to read the requests again; starts one when none runs (by D-Bus
/// activation where the service is installed, otherwise the tidemark-agent program found next
/// to this program, in the build tree or on PATH). Does nothing without a session bus.
void wakeAgent();

/// wakeAgent once the current work of the event loop is done: the many changes of one planning
/// run wake the agent once.
void scheduleAgentWake();

/// The program to run for `name` ("tidemark" or "tidemark-agent"): $TIDEMARK_APP_PATH or
/// $TIDEMARK_AGENT_PATH when set, else the file next to this program, else the one in the build
/// tree's folder of that program, else `name` (to be looked up on PATH).
QString companionProgram(const QString& name);

class LinuxNotificationCenter final : public NotificationCenter, public BackgroundTaskScheduler {
public:
    /// `afterChange` runs after every change of the file (the app wakes the agent; the agent
    /// re-arms its own timer).
    explicit LinuxNotificationCenter(std::filesystem::path file = PendingRequests::defaultPath(),
                                     std::function<void()> afterChange = scheduleAgentWake);
    ~LinuxNotificationCenter() override;

    // NotificationCenter
    void requestAuthorization(std::function<void(bool, std::optional<std::string>)> done) override;
    void authorizationStatus(std::function<void(AuthorizationStatus)> done) override;
    void add(const NotificationRequest& request,
             std::function<void(std::optional<std::string>)> done) override;
    void removePending(const std::vector<std::string>& identifiers) override;
    void removeAllPending() override;
    /// In one write transaction of the file, which also serialises the runs of all processes.
    void replacePending(const std::function<std::vector<NotificationRequest>()>& plan) override;
    void pending(std::function<void(std::vector<NotificationRequest>)> done) override;
    void setDelegate(NotificationCenterDelegate* delegate) override;
    NotificationCenterDelegate* delegate() const override;

    // BackgroundTaskScheduler: available wherever there is a session bus for the agent.
    BackgroundRefreshStatus backgroundRefreshStatus() const override;
    std::optional<std::string> submit(const BackgroundTaskRequest& request) override;
    void cancelAll() override;
    std::vector<BackgroundTaskRequest> pendingRequests() const override;

    /// The user activated a delivered notification (the agent started or called the app with
    /// its request identifier). Goes to the delegate if one is set; without one nothing happens.
    void deliverResponse(const std::string& identifier);

private:
    /// The open file, or null (and the reason logged) when it can't be opened.
    PendingRequests* file() const;
    /// Runs `work` on the file; logs and answers the error text on failure.
    std::optional<std::string> modify(const std::function<void(PendingRequests&)>& work);

    std::filesystem::path path_;
    std::function<void()> afterChange_;
    mutable std::mutex mutex_;
    mutable std::unique_ptr<PendingRequests> file_;
    NotificationCenterDelegate* delegate_ = nullptr;
};

} // namespace tidemark
