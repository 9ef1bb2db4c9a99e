// What the shell's tests share: recording stand-ins for the platform services, the per-test set-up
// (private home, fixed clock, fakes, warnings trap), the app or one page in a window with taps
// and typing, and events to seed the store with.
#pragma once

#include "QuietCloudService.h"
#include "TestSupport.h"
#include "cloud/CloudService.h"
#include "notifications/NotificationCenter.h"
#include "records/Observation.h"
#include "records/eventInfo.h"
#include "records/realmDataFunc.h"
#include "shell/tideMarkApp.h"
#include "widgets/widgetFunc.h"

#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>
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

/// What a window test starts from, anew for every test: a private home, the recording fakes, no
/// warning so far, and unless `clock` is false the fixed moment `hour`:00 on Tuesday 10 March
/// 2026 in Berlin (en_US). cleanup() takes them down in reverse and fails the running test on
/// any warning collected meanwhile (trapWarnings() must have been called once).
class ShellFixture {
public:
    void init(bool clock = true, int hour = 8);
    void cleanup();
    CallLog log() const { return services->log; }
    std::unique_ptr<IsolatedStorage> storage;
    std::unique_ptr<ScopedCalendarEnvironment> environment;
    std::unique_ptr<FakeServices> services;
};

/// Taps the middle of `item` in `window` once it is shown and laid out.
void tap(QQuickWindow* window, QQuickItem* item);
/// Taps the item named `name` under `page`, scrolling the Flickable that holds it to it first.
void tapIn(QQuickWindow* window, QQuickItem* page, const QString& name);
/// Types `text` key by key into the focused field.
void typeText(QQuickWindow* window, const QString& text);

/// The whole app launched in-process with the first start already done, its window shown.
class LaunchedApp {
public:
    /// Launches (again, after close()) and waits for the window; false when either fails.
    bool launch();
    void close();
    QQuickWindow* window() const;
    QQuickItem* item(const QString& name) const;
    QObject* stack() const;
    QQuickItem* topPage() const;
    /// Waits until the page on top is the one named `name` and the stack stands still.
    bool reaches(const QString& name) const;
    void tap(const QString& name) const { testing::tap(window(), item(name)); }
    void tapInPage(const QString& name) const { tapIn(window(), topPage(), name); }
    std::unique_ptr<tideMarkApp> app;
    std::unique_ptr<QQmlApplicationEngine> engine;
};

/// One page in a 390 x 844 window of `engine`: an ApplicationWindow with a StackView
/// "appStack" whose first item is "mainScreen", in the Material theme, light or dark.
class PageHost {
public:
    /// Pushes `file` with `properties` and returns the page once the stack stands still.
    QQuickItem* push(QQmlEngine& engine, const QString& file, const QVariantMap& properties = {},
                     bool dark = false);
    /// Shows `qml` (the text of one object, which names one item "page") in the window instead
    /// and returns that item.
    QQuickItem* show(QQmlEngine& engine, const QString& qml, bool dark = false);
    QQuickWindow* window() const { return window_.get(); }
    QObject* stack() const;
    int depth() const;
    QQuickItem* top() const;
    bool settled() const;
    void tap(QQuickItem* item) const { testing::tap(window(), item); }
    void tapIn(QQuickItem* page, const QString& name) const {
        testing::tapIn(window(), page, name);
    }
    void close() { window_.reset(); }

private:
    QObject* create(QQmlEngine& engine, const QString& body, bool dark);
    std::unique_ptr<QQuickWindow> window_;
};

/// An event without repeat rule on one day, with a colour ("" for none).
eventObject dayEvent(const std::string& id, const std::string& title, int year, int month, int day,
                     const std::string& color = "");
/// A one-off event on 10 March 2026 titled by its id, changed by `edit`.
eventInfo makeEvent(std::string id, std::string stamp,
                    const std::function<void(eventInfo&)>& edit = {});
/// A repeating event of `type` that ended on `endDay` March 2026.
eventInfo endedEvent(std::string id, std::string stamp, std::int64_t type, int endDay);
/// Writes the events to the store in one transaction.
void storeEvents(const std::vector<eventInfo>& events);
/// One event of every kind: one-off, daily, weekly, monthly, yearly, starred, with memo and
/// reminder marks, an ended one, and colours across the palette.
void seedEventsOfEveryKind();

} // namespace tidemark::testing
