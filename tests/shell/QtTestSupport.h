// Recording stand-ins for the platform services, for the shell's tests.
#pragma once

class QObject;
class QQuickItem;

#include "QuietCloudService.h"
#include "cloud/CloudService.h"
#include "notifications/NotificationCenter.h"
#include "records/Observation.h"
#include "records/eventInfo.h"
#include "widgets/widgetFunc.h"

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark::testing {

/// One log for all the fakes, so a test can check the order of calls across services.
using CallLog = std::shared_ptr<std::vector<std::string>>;

class FakeNotificationCenter final : public NotificationCenter {
public:
    explicit FakeNotificationCenter(CallLog log, bool grant = true)
        : log_(std::move(log)), grant_(grant) {}
    void requestAuthorization(std::function<void(bool, std::optional<std::string>)> done) override;
    void authorizationStatus(std::function<void(AuthorizationStatus)> done) override;
    void add(const NotificationRequest& r,
             std::function<void(std::optional<std::string>)> done) override;
    void removePending(const std::vector<std::string>& ids) override;
    void removeAllPending() override;
    void pending(std::function<void(std::vector<NotificationRequest>)> done) override;
    void setDelegate(NotificationCenterDelegate* d) override;
    NotificationCenterDelegate* delegate() const override { return delegate_; }

private:
    CallLog log_;
    bool grant_;
    NotificationCenterDelegate* delegate_ = nullptr;
};

class FakeScheduler final : public BackgroundTaskScheduler {
public:
    FakeScheduler(CallLog log, BackgroundRefreshStatus status)
        : log_(std::move(log)), status_(status) {}
    BackgroundRefreshStatus backgroundRefreshStatus() const override { return status_; }
    std::optional<std::string> submit(const BackgroundTaskRequest& r) override;
    void cancelAll() override;
    std::vector<BackgroundTaskRequest> pendingRequests() const override { return pending_; }

private:
    CallLog log_;
    BackgroundRefreshStatus status_;
    std::vector<BackgroundTaskRequest> pending_;
};

/// Logs each cloud transfer and check as it starts, by the names the screens know (an event by
/// its stored title); the answers never come.
class FakeCloud final : public QuietCloudService {
public:
    explicit FakeCloud(CallLog log) : log_(std::move(log)) {}
    void accountStatus(std::function<void(CloudAccountStatus, std::optional<CloudError>)>) override;
    void fetchRecord(
        const CloudRecordId& id,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)>) override;
    void modifyRecords(std::vector<CloudRecord>, std::vector<CloudRecordId> toDelete,
                       std::function<void(std::optional<CloudError>)>) override;

private:
    CallLog log_;
};

/// Keeps the cloud check's timed steps from running: a test sees the check start, never its end.
class HeldMainQueue final : public MainQueue {
public:
    void async(std::function<void()>) override {}
    void asyncAfter(double, std::function<void()>) override {}
};

class FakeWidgets final : public WidgetCenter {
public:
    explicit FakeWidgets(CallLog log) : log_(std::move(log)) {}
    void reloadAllTimelines() override { log_->push_back("widgets reload"); }

private:
    CallLog log_;
};

/// Installs all four fakes writing to one log; uninstalls them when it goes.
class FakeServices {
public:
    explicit FakeServices(BackgroundRefreshStatus status = BackgroundRefreshStatus::available,
                          bool grant = true);
    ~FakeServices();
    CallLog log = std::make_shared<std::vector<std::string>>();
    std::shared_ptr<FakeNotificationCenter> center;
};

/// The item named `name` under `root`, through the object tree and the visual tree (items that a
/// Repeater makes have a visual parent only); null when there is none.
QQuickItem* findChildItem(QObject* root, const QString& name);

/// Collects every warning and critical message of the process (QML warnings among them), so that
/// a test can fail on them; the handler stays installed for the rest of the program.
void trapWarnings();
/// The messages collected since the last call, cleared.
QStringList takeWarnings();

/// Records, for each committed write to the events, which fields of one event it changed: the
/// field names joined by "+", "" for a commit that changed none of them, "gone" once the event
/// is deleted. Tests see the order of single-field writes as the store saw them.
class FieldWriteRecorder {
public:
    explicit FieldWriteRecorder(std::string eventId);
    std::vector<std::string> writes;
    /// The same as text, with "-" for a commit that changed nothing.
    QStringList commits() const;

private:
    std::string id_;
    std::optional<eventInfo> last_;
    ObservationToken token_;
};

} // namespace tidemark::testing
