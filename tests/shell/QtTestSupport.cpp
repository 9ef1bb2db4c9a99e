#include "QtTestSupport.h"

#include "calendar/Calendar.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "shell/QmlTypes.h"

#include <QQmlComponent>
#include <QTest>
#include <algorithm>
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

void ShellFixture::init(bool clock, int hour) {
    takeWarnings();
    storage = std::make_unique<IsolatedStorage>();
    if (clock) {
        environment = std::make_unique<ScopedCalendarEnvironment>(
            fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, hour));
    }
    services = std::make_unique<FakeServices>();
}

void ShellFixture::cleanup() {
    services.reset();
    environment.reset();
    storage.reset();
    const QStringList warnings = takeWarnings();
    QVERIFY2(warnings.isEmpty(), qPrintable("Warnings: " + warnings.join('\n')));
}

void tap(QQuickWindow* window, QQuickItem* item) {
    QVERIFY(item);
    QVERIFY2(item->isVisible(), qPrintable(item->objectName()));
    // A part that has just appeared is laid out with the next frame.
    QVERIFY2(QTest::qWaitFor([&] { return item->width() > 2 && item->height() > 2; }, 1000),
             qPrintable(item->objectName()));
    QTest::qWait(40);
    const QPoint centre =
        item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    QTest::mouseMove(window, centre);
    QTest::mouseClick(window, Qt::LeftButton, {}, centre, 20);
    QCoreApplication::processEvents();
}

void tapIn(QQuickWindow* window, QQuickItem* page, const QString& name) {
    QTest::qWait(30); // let the layouts settle after the last tap
    QQuickItem* item = findChildItem(page, name);
    QVERIFY2(item, qPrintable(name));
    QQuickItem* flick = item->parentItem();
    while (flick && !flick->inherits("QQuickFlickable")) {
        flick = flick->parentItem();
    }
    if (flick) {
        auto* content = flick->property("contentItem").value<QQuickItem*>();
        const qreal y = item->mapToItem(content, QPointF(0, 0)).y();
        const qreal maxY =
            std::max<qreal>(0, flick->property("contentHeight").toReal() - flick->height());
        flick->setProperty("contentY", std::clamp<qreal>(y - 120, 0, maxY));
        QTest::qWait(20);
    }
    tap(window, item);
}

void typeText(QQuickWindow* window, const QString& text) {
    for (const QChar c : text) {
        QTest::keyClick(window, c.toLatin1());
    }
}

bool LaunchedApp::launch() {
    engine.reset();
    if (!app) {
        Setting<bool>("userLaunchStatus", false).set(true);
        app = std::make_unique<tideMarkApp>();
    }
    engine = std::make_unique<QQmlApplicationEngine>();
    return app->launch(*engine) && QTest::qWaitForWindowExposed(window());
}

void LaunchedApp::close() {
    engine.reset();
}

QQuickWindow* LaunchedApp::window() const {
    return engine && !engine->rootObjects().isEmpty()
               ? qobject_cast<QQuickWindow*>(engine->rootObjects().first())
               : nullptr;
}

QQuickItem* LaunchedApp::item(const QString& name) const {
    return findChildItem(window()->contentItem(), name);
}

QObject* LaunchedApp::stack() const {
    return item("appStack");
}

QQuickItem* LaunchedApp::topPage() const {
    return qvariant_cast<QQuickItem*>(stack()->property("currentItem"));
}

bool LaunchedApp::reaches(const QString& name) const {
    return QTest::qWaitFor([&] {
        return topPage() && topPage()->objectName() == name && !stack()->property("busy").toBool();
    });
}

QObject* PageHost::create(QQmlEngine& engine, const QString& body, bool dark) {
    window_.reset();
    QQmlComponent component(&engine);
    const QString host = QStringLiteral(R"(
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark
import TideMark.Components
ApplicationWindow {
    width: 390
    height: 844
    visible: true
    Material.theme: %1 ? Material.Dark : Material.Light
    Material.accent: Material.Teal
    function pushPage(url, properties) {
        return stack.push(url, properties, StackView.Immediate)
    }
    %2
}
)")
                             .arg(dark ? "true" : "false", body);
    component.setData(host.toUtf8(), QUrl(QStringLiteral("qrc:/TestHost.qml")));
    QObject* root = component.create();
    if (!root) {
        qWarning() << component.errors();
        return nullptr;
    }
    window_.reset(qobject_cast<QQuickWindow*>(root));
    return QTest::qWaitForWindowExposed(window_.get()) ? root : nullptr;
}

QQuickItem* PageHost::push(QQmlEngine& engine, const QString& file, const QVariantMap& properties,
                           bool dark) {
    QObject* root = create(engine, QStringLiteral(R"(StackView {
        id: stack
        objectName: "appStack"
        anchors.fill: parent
        initialItem: Item { objectName: "mainScreen" }
    })"),
                           dark);
    if (!root) {
        return nullptr;
    }
    QVariant page;
    QMetaObject::invokeMethod(root, "pushPage", Q_RETURN_ARG(QVariant, page),
                              Q_ARG(QVariant, moduleFileUrl(file)), Q_ARG(QVariant, properties));
    if (!QTest::qWaitFor([&] { return settled(); })) {
        return nullptr;
    }
    return qobject_cast<QQuickItem*>(page.value<QObject*>());
}

QQuickItem* PageHost::show(QQmlEngine& engine, const QString& qml, bool dark) {
    QObject* root = create(
        engine, QStringLiteral("Pane { anchors.fill: parent; padding: 0; %1 }").arg(qml), dark);
    return root ? findChildItem(window_->contentItem(), "page") : nullptr;
}

QObject* PageHost::stack() const {
    return findChildItem(window_->contentItem(), "appStack");
}

int PageHost::depth() const {
    return stack()->property("depth").toInt();
}

QQuickItem* PageHost::top() const {
    return qobject_cast<QQuickItem*>(stack()->property("currentItem").value<QObject*>());
}

bool PageHost::settled() const {
    return !stack()->property("busy").toBool();
}

eventObject dayEvent(const std::string& id, const std::string& title, int year, int month, int day,
                     const std::string& color) {
    eventObject event;
    event.eventId = id;
    event.eventTitle = title;
    event.timeStampGenerate = "20260101000000";
    event.eventStartDateYear = year;
    event.eventStartDateMonth = month;
    event.eventStartDateDay = day;
    event.eventColorString = color;
    return event;
}

eventInfo makeEvent(std::string id, std::string stamp,
                    const std::function<void(eventInfo&)>& edit) {
    eventInfo e;
    e.eventId = std::move(id);
    e.eventTitle = e.eventId;
    e.timeStampGenerate = std::move(stamp);
    e.eventStartDateYear = 2026;
    e.eventStartDateMonth = 3;
    e.eventStartDateDay = 10;
    if (edit) {
        edit(e);
    }
    return e;
}

eventInfo endedEvent(std::string id, std::string stamp, std::int64_t type, int endDay) {
    return makeEvent(std::move(id), std::move(stamp), [&](eventInfo& e) {
        e.eventRepeatOrNot = true;
        e.eventType = type;
        e.eventHaveEndDateOrNot = true;
        e.eventEndDateYear = 2026;
        e.eventEndDateMonth = 3;
        e.eventEndDateDay = endDay;
    });
}

void storeEvents(const std::vector<eventInfo>& events) {
    auto s = Store::open();
    s.write([&] {
        for (const auto& e : events) {
            s.add(e);
        }
    });
}

void seedEventsOfEveryKind() {
    realmDataFunc data;
    auto oneOff = dayEvent("E1", "Dentist appointment", 2026, 3, 12, "colorForUserSelection01");
    oneOff.eventContent = "Bring the insurance card.";
    data.addEventData(oneOff);

    auto daily = dayEvent("E2", "Evening walk", 2026, 2, 1, "colorForUserSelection03");
    daily.eventRepeatOrNot = true;
    daily.eventType = 1;
    daily.eventDateWhenEveryDayHour = 19;
    daily.eventDateWhenEveryDayMin = 30;
    daily.eventNotiOrNot = true;
    data.addEventData(daily);

    auto weekly = dayEvent("E3", "Choir rehearsal", 2026, 1, 6, "colorForUserSelection04");
    weekly.eventRepeatOrNot = true;
    weekly.eventType = 2;
    weekly.eventDateWhenEveryWeek = encodeDayListArchive({2, 4});
    weekly.eventStarOrNot = true;
    data.addEventData(weekly);

    auto monthly = dayEvent("E4", "Pay the rent", 2025, 11, 1, "colorForUserSelection02");
    monthly.eventRepeatOrNot = true;
    monthly.eventType = 3;
    monthly.eventDateWhenEveryMonth = encodeDayListArchive({1, 15});
    monthly.eventHaveMemoOrNot = true;
    data.addEventData(monthly);

    auto yearly = dayEvent("E5", "Mira's birthday", 1990, 3, 20, "colorForUserSelection05");
    yearly.eventRepeatOrNot = true;
    yearly.eventType = 4;
    yearly.eventStarOrNot = true;
    data.addEventData(yearly);

    auto ended = dayEvent("E6", "Winter course", 2026, 1, 5, "-");
    ended.eventRepeatOrNot = true;
    ended.eventType = 2;
    ended.eventDateWhenEveryWeek = encodeDayListArchive({1});
    ended.eventHaveEndDateOrNot = true;
    ended.eventEndDateYear = 2026;
    ended.eventEndDateMonth = 3;
    ended.eventEndDateDay = 2;
    data.addEventData(ended);

    data.addEventData(dayEvent("E7", "Tax return due", 2026, 3, 20, ""));
    data.addEventData(dayEvent("E8", "Concert", 2026, 3, 20, "colorForUserSelection07"));
}

} // namespace tidemark::testing
