#include "notifications/NotificationCenter.h"

#include <mutex>

namespace tidemark {

namespace {

/// Answers for a session that has no notification service: nothing is authorised and nothing
/// is kept, so the planner files nothing and the settings mirror "not allowed".
class UnavailableNotificationCenter final : public NotificationCenter {
public:
    void requestAuthorization(std::function<void(bool, std::optional<std::string>)> done) override {
        done(false, std::string("No notification service is available"));
    }
    void authorizationStatus(std::function<void(AuthorizationStatus)> done) override {
        done(AuthorizationStatus::denied);
    }
    void add(const NotificationRequest&,
             std::function<void(std::optional<std::string>)> done) override {
        if (done) {
            done(std::string("No notification service is available"));
        }
    }
    void removePending(const std::vector<std::string>&) override {}
    void removeAllPending() override {}
    void pending(std::function<void(std::vector<NotificationRequest>)> done) override { done({}); }
    void setDelegate(NotificationCenterDelegate* delegate) override { delegate_ = delegate; }
    NotificationCenterDelegate* delegate() const override { return delegate_; }

private:
    NotificationCenterDelegate* delegate_ = nullptr;
};

class UnavailableBackgroundTaskScheduler final : public BackgroundTaskScheduler {
public:
    BackgroundRefreshStatus backgroundRefreshStatus() const override {
        return BackgroundRefreshStatus::restricted;
    }
    std::optional<std::string> submit(const BackgroundTaskRequest&) override {
        return std::string("Background refresh is not available");
    }
    void cancelAll() override {}
    std::vector<BackgroundTaskRequest> pendingRequests() const override { return {}; }
};

std::mutex gMutex;
std::shared_ptr<NotificationCenter> gCenter;
std::shared_ptr<BackgroundTaskScheduler> gScheduler;

} // namespace

void NotificationCenter::replacePending(
    const std::function<std::vector<NotificationRequest>()>& plan) {
    removeAllPending();
    for (const auto& request : plan()) {
        add(request, nullptr);
    }
}

NotificationCenter& notificationCenter() {
    std::lock_guard lock(gMutex);
    if (!gCenter) {
        gCenter = std::make_shared<UnavailableNotificationCenter>();
    }
    return *gCenter;
}

BackgroundTaskScheduler& backgroundTaskScheduler() {
    std::lock_guard lock(gMutex);
    if (!gScheduler) {
        gScheduler = std::make_shared<UnavailableBackgroundTaskScheduler>();
    }
    return *gScheduler;
}

void setNotificationCenter(std::shared_ptr<NotificationCenter> center) {
    std::lock_guard lock(gMutex);
    gCenter = std::move(center);
}

void setBackgroundTaskScheduler(std::shared_ptr<BackgroundTaskScheduler> scheduler) {
    std::lock_guard lock(gMutex);
    gScheduler = std::move(scheduler);
}

} // namespace tidemark
