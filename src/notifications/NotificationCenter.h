// The local notification centre the planner files its requests with, and the scheduler of the
// background refresh. Both are interfaces: the Linux services (a persisted request store delivered
// by the tidemark-agent through org.freedesktop.Notifications) install themselves at start-up
// through setNotificationCenter / setBackgroundTaskScheduler. Until one is installed the
// "unavailable" ones answer: no authorisation, nothing pending, background refresh restricted.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// One one-shot request: shown `delaySeconds` after it was filed.
struct NotificationRequest {
    std::string identifier;
    std::string title;
    std::string subtitle;
    double delaySeconds = 0;
    bool sound = true;
    bool timeSensitive = true;

    bool operator==(const NotificationRequest&) const = default;
};

enum class AuthorizationStatus { notDetermined, denied, authorized };

/// What the app reacts to when the user interacts with a delivered notification.
class NotificationCenterDelegate {
public:
    virtual ~NotificationCenterDelegate() = default;
    /// The user tapped the notification with this request identifier.
    virtual void didReceiveResponse(const std::string& requestIdentifier) = 0;
};

class NotificationCenter {
public:
    virtual ~NotificationCenter() = default;

    /// Asks for permission to alert, badge and play sounds; the completion gets (granted, error).
    virtual void
    requestAuthorization(std::function<void(bool, std::optional<std::string>)> done) = 0;
    virtual void authorizationStatus(std::function<void(AuthorizationStatus)> done) = 0;
    virtual void add(const NotificationRequest& request,
                     std::function<void(std::optional<std::string>)> done) = 0;
    virtual void removePending(const std::vector<std::string>& identifiers) = 0;
    virtual void removeAllPending() = 0;
    /// One planning run: the requests `plan` answers replace the pending ones still to come. A
    /// centre shared between processes makes it one step, `plan` included, that no other run
    /// interleaves with, so that what is pending is always exactly one plan. This fallback, for
    /// centres that keep nothing between processes, removes all and adds the plan.
    virtual void replacePending(const std::function<std::vector<NotificationRequest>()>& plan);
    virtual void pending(std::function<void(std::vector<NotificationRequest>)> done) = 0;
    /// The delegate gets the responses of this process; nullptr clears it.
    virtual void setDelegate(NotificationCenterDelegate* delegate) = 0;
    virtual NotificationCenterDelegate* delegate() const = 0;
};

enum class BackgroundRefreshStatus { restricted, denied, available };

struct BackgroundTaskRequest {
    std::string identifier;
    double earliestBeginDate = 0; ///< seconds since 1970
};

class BackgroundTaskScheduler {
public:
    virtual ~BackgroundTaskScheduler() = default;
    virtual BackgroundRefreshStatus backgroundRefreshStatus() const = 0;
    /// Files a request; the error text when it could not be filed.
    virtual std::optional<std::string> submit(const BackgroundTaskRequest& request) = 0;
    virtual void cancelAll() = 0;
    virtual std::vector<BackgroundTaskRequest> pendingRequests() const = 0;
};

/// The installed services (never null: the unavailable ones stand in).
NotificationCenter& notificationCenter();
BackgroundTaskScheduler& backgroundTaskScheduler();
void setNotificationCenter(std::shared_ptr<NotificationCenter> center);
void setBackgroundTaskScheduler(std::shared_ptr<BackgroundTaskScheduler> scheduler);

} // namespace tidemark
