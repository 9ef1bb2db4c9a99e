#include "QtTestSupport.h"

#include "calendar/Calendar.h"

namespace tidemark::testing {

void FakeNotificationCenter::requestAuthorization(
    std::function<void(bool, std::optional<std::string>)> done) {
    log_->push_back("noti request authorization");
    done(grant_, std::nullopt);
}
void FakeNotificationCenter::authorizationStatus(std::function<void(AuthorizationStatus)> done) {
    done(grant_ ? AuthorizationStatus::authorized : AuthorizationStatus::denied);
}
void FakeNotificationCenter::add(const NotificationRequest& r,
                                 std::function<void(std::optional<std::string>)> done) {
    log_->push_back("noti add " + r.identifier);
    if (done) {
        done(std::nullopt);
    }
}
void FakeNotificationCenter::removePending(const std::vector<std::string>& ids) {
    for (const auto& id : ids) {
        log_->push_back("noti remove " + id);
    }
}
void FakeNotificationCenter::removeAllPending() {
    log_->push_back("noti remove all");
}
void FakeNotificationCenter::pending(std::function<void(std::vector<NotificationRequest>)> done) {
    done({});
}
void FakeNotificationCenter::setDelegate(NotificationCenterDelegate* d) {
    log_->push_back(d ? "noti delegate set" : "noti delegate cleared");
    delegate_ = d;
}

std::optional<std::string> FakeScheduler::submit(const BackgroundTaskRequest& r) {
    log_->push_back(
        "bg submit " + r.identifier + " +" +
        std::to_string(static_cast<long long>(r.earliestBeginDate - now().secondsSince1970)));
    pending_.push_back(r);
    return std::nullopt;
}
void FakeScheduler::cancelAll() {
    log_->push_back("bg cancel all");
    pending_.clear();
}

FakeServices::FakeServices(BackgroundRefreshStatus status, bool grant) {
    center = std::make_shared<FakeNotificationCenter>(log, grant);
    setNotificationCenter(center);
    setBackgroundTaskScheduler(std::make_shared<FakeScheduler>(log, status));
    setCloudDatabase(std::make_shared<FakeCloud>(log));
    setWidgetCenter(std::make_shared<FakeWidgets>(log));
}

FakeServices::~FakeServices() {
    setNotificationCenter(nullptr);
    setBackgroundTaskScheduler(nullptr);
    setCloudDatabase(nullptr);
    setWidgetCenter(nullptr);
}

} // namespace tidemark::testing
