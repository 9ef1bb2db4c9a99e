#include "QtTestSupport.h"

#include "calendar/Calendar.h"
#include "records/Store.h"

#include <QQuickItem>
#include <mutex>

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

void FakeCloud::accountStatus(std::function<void(CloudAccountStatus, std::optional<CloudError>)>) {
    log_->push_back("cloud check");
}
void FakeCloud::fetchRecord(
    const CloudRecordId& id,
    std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)>) {
    if (id.zoneName == "eventZone") {
        const auto stored = Store::open().object<eventInfo>(id.recordName);
        log_->push_back("cloud save " + (stored ? stored->eventTitle : id.recordName));
    } else {
        log_->push_back("cloud memo " + id.recordName);
    }
}
void FakeCloud::modifyRecords(std::vector<CloudRecord>, std::vector<CloudRecordId> toDelete,
                              std::function<void(std::optional<CloudError>)>) {
    for (const auto& id : toDelete) {
        log_->push_back((id.zoneName == "eventZone" ? "cloud delete " : "cloud memo delete ") +
                        id.recordName);
    }
}

FakeServices::FakeServices(BackgroundRefreshStatus status, bool grant) {
    center = std::make_shared<FakeNotificationCenter>(log, grant);
    setNotificationCenter(center);
    setBackgroundTaskScheduler(std::make_shared<FakeScheduler>(log, status));
    setCloudService(std::make_shared<FakeCloud>(log));
    setMainQueue(std::make_shared<HeldMainQueue>());
    setWidgetCenter(std::make_shared<FakeWidgets>(log));
}

FakeServices::~FakeServices() {
    setNotificationCenter(nullptr);
    setBackgroundTaskScheduler(nullptr);
    setCloudService(nullptr);
    setMainQueue(nullptr);
    setWidgetCenter(nullptr);
}

namespace {

std::mutex warningsLock;
QStringList warnings;
QtMessageHandler previousHandler = nullptr;

void recordWarning(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg) {
        std::lock_guard lock(warningsLock);
        warnings << message;
    }
    previousHandler(type, context, message);
}

std::string changedFields(const eventInfo& before, const eventInfo& after) {
    std::string out;
    std::apply(
        [&](auto... f) {
            ((before.*(f.member) != after.*(f.member)
                  ? (void)(out += (out.empty() ? "" : "+") + std::string(f.name))
                  : (void)0),
             ...);
        },
        EventFields::fields());
    return out;
}

} // namespace

QQuickItem* findChildItem(QObject* root, const QString& name) {
    if (!root) {
        return nullptr;
    }
    QList<QObject*> queue{root};
    while (!queue.isEmpty()) {
        QObject* next = queue.takeFirst();
        if (next != root && next->objectName() == name) {
            if (auto* item = qobject_cast<QQuickItem*>(next)) {
                return item;
            }
        }
        queue += next->children();
        if (auto* item = qobject_cast<QQuickItem*>(next)) {
            for (auto* c : item->childItems()) {
                queue += c;
            }
        }
    }
    return nullptr;
}

void trapWarnings() {
    std::lock_guard lock(warningsLock);
    if (!previousHandler) {
        previousHandler = qInstallMessageHandler(recordWarning);
    }
}

QStringList takeWarnings() {
    std::lock_guard lock(warningsLock);
    QStringList out;
    out.swap(warnings);
    return out;
}

FieldWriteRecorder::FieldWriteRecorder(std::string eventId)
    : id_(std::move(eventId)), last_(Store::open().object<eventInfo>(id_)) {
    token_ = Results<eventInfo>().observe([this] {
        auto now = Store::open().object<eventInfo>(id_);
        if (!now) {
            writes.push_back("gone");
        } else {
            writes.push_back(last_ ? changedFields(*last_, *now) : std::string());
        }
        last_ = now;
    });
}

QStringList FieldWriteRecorder::commits() const {
    QStringList out;
    for (const auto& w : writes) {
        out << (w.empty() ? QStringLiteral("-") : QString::fromStdString(w));
    }
    return out;
}

} // namespace tidemark::testing
