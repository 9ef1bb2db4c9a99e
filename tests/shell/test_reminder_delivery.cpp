// Reminders end to end on a private session bus: the notification centre files requests, the
// real tidemark-agent (started by D-Bus activation) delivers them to a real notification server
// (dunst on a virtual X display, which logs what it shows), and activating a notification opens
// the app, which records the tapped request.
#include "QtTestSupport.h"
#include "agent/ReminderAgent.h"
#include "notifications/notiFunc.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "shell/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

struct Shown {
    QString summary, body, urgency, desktopEntry;
};

} // namespace

class ReminderDeliveryTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir work_;
    std::unique_ptr<IsolatedStorage> storage_;
    QProcess display_, bus_, server_;
    QString address_;
    std::unique_ptr<LinuxNotificationCenter> center_;

    QString logPath() const { return work_.filePath("shown.log"); }

    /// What the server has shown so far, in order.
    QList<Shown> shown() const {
        QList<Shown> out;
        QFile file(logPath());
        if (!file.open(QIODevice::ReadOnly)) {
            return out;
        }
        for (const auto& line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)) {
            const auto f = line.split('|');
            if (f.size() == 4) {
                out.append({f[0], f[1], f[2], f[3]});
            }
        }
        return out;
    }

    /// How often each summary that starts with `prefix` has been shown.
    QHash<QString, int> shownCounts(const QString& prefix) const {
        QHash<QString, int> out;
        for (const auto& s : shown()) {
            if (s.summary.startsWith(prefix)) {
                ++out[s.summary];
            }
        }
        return out;
    }
    /// What waits in the requests file.
    static std::vector<PendingRequest> left() {
        return PendingRequests(PendingRequests::defaultPath()).pending();
    }
    /// Calls the agent's Reschedule and waits at most `timeoutMs` for it to return.
    static QDBusMessage reschedule(int timeoutMs) {
        return QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(kAgentBusName, kAgentObjectPath, kAgentInterface,
                                           "Reschedule"),
            QDBus::Block, timeoutMs);
    }
    /// The process id of the owner of `name` on the private bus, or 0.
    uint ownerPid(const QString& name) {
        const QDBusReply<uint> pid = QDBusConnection::sessionBus().interface()->servicePid(name);
        return pid.isValid() ? pid.value() : 0;
    }
    bool owned(const QString& name) {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value();
    }
    void killOwner(const QString& name) {
        if (const uint pid = ownerPid(name)) {
            ::kill(static_cast<pid_t>(pid), SIGKILL);
            QTRY_VERIFY_WITH_TIMEOUT(!owned(name), 5000);
        }
    }
    /// The agent's log lines so far (activated services write to the bus daemon's stderr).
    QStringList agentLog() {
        static QString all;
        all += QString::fromLocal8Bit(bus_.readAllStandardError());
        return all.split('\n', Qt::SkipEmptyParts);
    }
    static NotificationRequest request(const std::string& id, const std::string& title,
                                       double delay) {
        return NotificationRequest{id, title, "about " + title, delay, true, true};
    }
    void startServer() {
        server_.start("dunst", {"-config", work_.filePath("dunstrc")});
        QVERIFY2(server_.waitForStarted(), "dunst is not installed (scripts/setup installs it)");
        QTRY_VERIFY_WITH_TIMEOUT(owned(kNotificationsBusName), 10000);
    }
    void dunstctl(const QStringList& arguments) {
        QProcess control;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", address_);
        control.setProcessEnvironment(env);
        control.start("dunstctl", arguments);
        QVERIFY(control.waitForFinished(10000));
        QCOMPARE(control.exitCode(), 0);
    }
    void file(const NotificationRequest& r) {
        std::optional<std::string> error = std::string("not called");
        center_->add(r, [&](std::optional<std::string> e) { error = std::move(e); });
        QVERIFY2(!error, error ? error->c_str() : "");
    }

private slots:
    void initTestCase() {
        QVERIFY(work_.isValid());
        storage_ = std::make_unique<IsolatedStorage>();

        display_.start("Xvfb",
                       {"-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
        QVERIFY2(display_.waitForStarted(), "Xvfb is not installed (scripts/setup installs it)");
        QVERIFY(display_.waitForReadyRead(15000));
        const QString displayName = ":" + QString::fromLatin1(display_.readLine().trimmed());

        // The agent is found by D-Bus activation, as in an installed session.
        const auto write = [&](const QString& name, const QString& text) {
            QFile file(work_.filePath(name));
            return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
        };
        QDir(work_.path()).mkpath("services");
        QVERIFY(write("services/org.tidemark.TideMark.Agent.service",
                      "[D-BUS Service]\nName=org.tidemark.TideMark.Agent\nExec=" TIDEMARK_AGENT_PATH
                      "\n"));
        QVERIFY(
            write("bus.conf",
                  QStringLiteral("<busconfig><type>session</type><listen>unix:tmpdir=%1</listen>"
                                 "<servicedir>%2</servicedir><policy context=\"default\">"
                                 "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow "
                                 "eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n")
                      .arg(work_.path(), work_.filePath("services"))));

        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("QT_LOGGING_RULES", "tidemark.agent.debug=true");
        env.insert("TIDEMARK_APP_PATH", TIDEMARK_APP_PATH);
        env.insert("DISPLAY", displayName);
        bus_.setProcessEnvironment(env);
        bus_.start("dbus-daemon",
                   {"--config-file", work_.filePath("bus.conf"), "--nofork", "--print-address=1"});
        QVERIFY2(bus_.waitForStarted(), "dbus-daemon is not installed");
        QVERIFY(bus_.waitForReadyRead(10000));
        address_ = QString::fromLocal8Bit(bus_.readLine().trimmed());
        qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toLocal8Bit());
        QVERIFY2(QDBusConnection::sessionBus().isConnected(),
                 qPrintable(address_ + " " + bus_.readAllStandardError()));

        // dunst runs the script for each notification it shows. Every notification is recorded,
        // also one equal to another on screen (dunst would stack it there, unrecorded). Drawing
        // hundreds would take dunst minutes: the bulk ones are taken, answered and recorded, but
        // not drawn.
        QVERIFY(write("record.sh",
                      QStringLiteral("#!/bin/sh\nprintf '%s|%s|%s|%s\\n' \"$DUNST_SUMMARY\" "
                                     "\"$DUNST_BODY\" \"$DUNST_URGENCY\" "
                                     "\"$DUNST_DESKTOP_ENTRY\" >> '%1'\n")
                          .arg(logPath())));
        QVERIFY(QFile::setPermissions(work_.filePath("record.sh"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(
            write("dunstrc", QStringLiteral("[global]\n    stack_duplicates = false\n"
                                            "[record]\n    summary = \"*\"\n    script = %1\n"
                                            "[bulk]\n    summary = \"Bulk *\"\n    format = \"\"\n")
                                 .arg(work_.filePath("record.sh"))));
        env.insert("DBUS_SESSION_BUS_ADDRESS", address_);
        server_.setProcessEnvironment(env);
        startServer();

        center_ =
            std::make_unique<LinuxNotificationCenter>(PendingRequests::defaultPath(), wakeAgent);
    }

    void cleanupTestCase() {
        killOwner(kAppBusName);
        center_.reset();
        for (QProcess* p : {&server_, &bus_, &display_}) {
            p->kill();
            p->waitForFinished();
        }
        storage_.reset();
    }

    void aFiledRequestIsShownWithItsTextsAndUrgency() {
        const auto before = shown().size();
        file(request("E1@@A", "Dentist", 2));
        // Activation by the wake-up call: the agent now runs.
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAgentBusName), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(shown().size(), before + 1, 10000);
        const Shown s = shown().last();
        QCOMPARE(s.summary, QString("Dentist"));
        QCOMPARE(s.body, QString("about Dentist"));
        QCOMPARE(s.urgency, QString("CRITICAL"));
        QCOMPARE(s.desktopEntry, QString("org.tidemark.TideMark"));
        // It leaves the file once the agent has the server's answer.
        QTRY_VERIFY_WITH_TIMEOUT(left().empty(), 5000);
    }

    void theAgentWakesOncePerRequestAndNotWhileIdle() {
        auto wakes = [this] { return agentLog().filter("timer woke").size(); };
        const auto wakesBefore = wakes();
        const auto before = shown().size();
        file(request("E2@@A", "First", 1.5));
        file(request("E3@@A", "Second", 1.5));
        file(request("E4@@A", "Third", 2.5));
        QTRY_COMPARE_WITH_TIMEOUT(shown().size(), before + 3, 10000);
        QTest::qWait(300);
        const auto used = wakes() - wakesBefore;
        QVERIFY2(used >= 1 && used <= 3, qPrintable(QString::number(used)));
        QTest::qWait(2500);
        QCOMPARE(wakes() - wakesBefore, used);
        // Delivered in the order of their times.
        const auto all = shown();
        QCOMPARE(all[all.size() - 1].summary, QString("Third"));
    }

    void removeAllLeavesNothingToShow() {
        const auto before = shown().size();
        file(request("E5@@A", "Gone", 1.5));
        file(request("E6@@A", "Gone too", 2));
        center_->removeAllPending();
        QTest::qWait(3500);
        QCOMPARE(shown().size(), before);
    }

    void aRequestFiledBeforeTheAgentDiedIsDeliveredWhenItComesBack() {
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAgentBusName), 5000);
        const auto before = shown().size();
        file(request("E7@@A", "Survivor", 1.5));
        QTest::qWait(200);
        killOwner(kAgentBusName);
        QTest::qWait(2500); // due while no agent runs
        QCOMPARE(shown().size(), before);
        wakeAgent(); // as the session's autostart or the app's next change would
        QTRY_COMPARE_WITH_TIMEOUT(shown().size(), before + 1, 10000);
        QCOMPARE(shown().last().summary, QString("Survivor"));
    }

    void aReminderWithoutAServerWaitsForOne() {
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAgentBusName), 5000);
        const auto before = shown().size();
        server_.kill();
        server_.waitForFinished();
        QTRY_VERIFY_WITH_TIMEOUT(!owned(kNotificationsBusName), 5000);
        file(request("E10@@A", "Patient", 1));
        QTest::qWait(2000); // due, and no server to show it
        std::vector<NotificationRequest> waiting;
        center_->pending([&](std::vector<NotificationRequest> p) { waiting = std::move(p); });
        QCOMPARE(waiting.size(), std::size_t(1));
        startServer();
        QTRY_COMPARE_WITH_TIMEOUT(shown().size(), before + 1, 10000);
        QCOMPARE(shown().last().summary, QString("Patient"));
    }

    void aSecondAgentLeavesTheWorkToTheFirst() {
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAgentBusName), 5000);
        const uint first = ownerPid(kAgentBusName);
        QProcess second;
        second.start(TIDEMARK_AGENT_PATH, {});
        QVERIFY(second.waitForFinished(10000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(second.readAllStandardError().contains("Another reminder agent"));
        QCOMPARE(ownerPid(kAgentBusName), first);
    }

    void theBackgroundRefreshRunsAtItsTimeAndChainsOn() {
        const double now = wallClockNow();
        QVERIFY(!center_->submit({bgFunc::kTaskIdentifier, now + 1.5}));
        QTRY_VERIFY_WITH_TIMEOUT(agentLog().contains("tidemark.agent: background refresh"), 10000);
        QTRY_COMPARE_WITH_TIMEOUT(center_->pendingRequests().size(), std::size_t(1), 5000);
        const auto next = center_->pendingRequests().front();
        QCOMPARE(QString::fromStdString(next.identifier), QString(bgFunc::kTaskIdentifier));
        QVERIFY(std::abs(next.earliestBeginDate - (wallClockNow() + 10800)) < 60);
    }

    void activatingANotificationMakesTheAppRecordIt() {
        Setting<bool>(kSwitchKey, true).set(true);
        // Critical notifications stay on screen: clear them, so that ours is the first.
        dunstctl({"close-all"});
        const auto before = shown().size();
        file(request("E8@@TAPPED", "Tap me", 1.5));
        QTRY_COMPARE_WITH_TIMEOUT(shown().size(), before + 1, 10000);
        dunstctl({"action", "0"});
        Setting<std::string> info{"FUNC_NOTI_userLaunchAppByPressLocalNotificationEventInfo", ""};
        Setting<bool> status{"FUNC_NOTI_userLaunchAppByPressLocalNotificationStatu", false};
        QTRY_COMPARE_WITH_TIMEOUT(QString::fromStdString(info.get()), QString("E8@@TAPPED"), 30000);
        QTRY_VERIFY_WITH_TIMEOUT(status.get(), 5000); // written right after the identifier
    }

    void theRunningAppTakesATapOnlyWithTheMasterSwitchOnAtLaunch_data() {
        QTest::addColumn<bool>("switchAtLaunch");
        QTest::addColumn<bool>("recorded");
        QTest::newRow("on") << true << true;
        QTest::newRow("off") << false << false;
    }
    void theRunningAppTakesATapOnlyWithTheMasterSwitchOnAtLaunch() {
        QFETCH(bool, switchAtLaunch);
        QFETCH(bool, recorded);
        killOwner(kAppBusName);
        Setting<bool>(kSwitchKey, true).set(switchAtLaunch);
        Setting<std::string> info{"FUNC_NOTI_userLaunchAppByPressLocalNotificationEventInfo", ""};
        info.set("earlier");
        QProcess app;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", address_);
        env.insert("QT_QPA_PLATFORM", "offscreen");
        app.setProcessEnvironment(env);
        app.start(TIDEMARK_APP_PATH, {});
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAppBusName), 20000);
        // A tap while the app runs reaches it through its second start.
        QProcess tap;
        tap.setProcessEnvironment(env);
        tap.start(TIDEMARK_APP_PATH, {"--notification-response", "E9@@RUNNING"});
        QVERIFY(tap.waitForFinished(20000));
        QCOMPARE(tap.exitCode(), 0);
        QTest::qWait(500);
        QCOMPARE(info.get() == "E9@@RUNNING", recorded);
        app.kill();
        app.waitForFinished();
    }

    void anAgentKilledWhileDeliveringLosesNothing() {
        killOwner(kAgentBusName);
        dunstctl({"close-all"});
        // Enough to kill the agent in the middle; delivering them takes a few seconds (on a
        // machine busy with other work, dunst's scripts can slow that to minutes).
        constexpr int kCount = 500;
        // Filed at once, due at once.
        PendingRequests(PendingRequests::defaultPath()).replaceAll([] {
            std::vector<NotificationRequest> bulk;
            for (int i = 0; i < kCount; ++i) {
                const auto n = std::to_string(i);
                bulk.push_back({"BULK" + n + "@@K", "Bulk " + n, "bulk", 0, false, false});
            }
            return bulk;
        });
        QElapsedTimer clock;
        clock.start();
        wakeAgent();
        QTRY_VERIFY_WITH_TIMEOUT(shownCounts("Bulk ").size() >= 100, 30000);
        killOwner(kAgentBusName);
        QVERIFY2(!left().empty(), "nothing was left to deliver once the agent was killed");
        wakeAgent(); // the next agent
        QTRY_COMPARE_WITH_TIMEOUT(shownCounts("Bulk ").size(), kCount, 180000);
        QTRY_VERIFY_WITH_TIMEOUT(left().empty(), 10000);
        // Twice only what the killed agent had sent without having recorded the answer yet.
        const auto counts = shownCounts("Bulk ");
        const auto twice = std::count(counts.begin(), counts.end(), 2);
        QCOMPARE(std::count_if(counts.begin(), counts.end(), [](int c) { return c > 2; }), 0);
        QVERIFY2(twice <= ReminderAgent::kWindow, qPrintable(QString::number(twice)));
        qInfo("%d reminders shown in %lld ms, %d of them twice", kCount,
              static_cast<long long>(clock.elapsed()), static_cast<int>(twice));
        dunstctl({"close-all"});
    }

    void aServerThatAnswersLateShowsEachReminderOnce() {
        wakeAgent();
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAgentBusName), 5000);
        dunstctl({"close-all"});
        // The server stops answering for longer than the usual call timeouts, while the
        // reminders fall due and are sent. Some play a sound: the agent asks the server first
        // whether it can.
        const auto server = static_cast<pid_t>(server_.processId());
        struct Resume {
            pid_t pid;
            ~Resume() { ::kill(pid, SIGCONT); }
        } resume{server};
        ::kill(server, SIGSTOP);
        QElapsedTimer stopped;
        stopped.start();
        constexpr int kCount = ReminderAgent::kWindow + 8;
        for (int i = 0; i < kCount; ++i) {
            const auto n = std::to_string(i);
            file({"SLOW" + n + "@@S", "Slow " + n, "slow", 1, i % 2 == 1, true});
        }
        QTest::qWait(1500);
        // The agent serves its own bus meanwhile, and a wake sends nothing twice.
        const QDBusMessage reply = reschedule(3000);
        QTest::qWait(7000 - static_cast<int>(stopped.elapsed()));
        ::kill(server, SIGCONT);
        QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
        QTRY_COMPARE_WITH_TIMEOUT(shownCounts("Slow ").size(), kCount, 20000);
        QTRY_VERIFY_WITH_TIMEOUT(left().empty(), 10000);
        QCOMPARE(reschedule(5000).type(), QDBusMessage::ReplyMessage);
        QTest::qWait(1000);
        const auto counts = shownCounts("Slow ");
        QCOMPARE(std::count(counts.begin(), counts.end(), 1), qsizetype(kCount));
        dunstctl({"close-all"});
    }

    void theAppAndTheAgentNeverPlanAtOnce() {
        wakeAgent();
        QTRY_VERIFY_WITH_TIMEOUT(owned(kAgentBusName), 5000);
        // A daily event with a reminder, half a day away from now: each plan is 60 requests a
        // day apart.
        eventInfo daily;
        daily.eventId = daily.eventNotiId = "DAILY";
        daily.eventTitle = "Daily";
        daily.eventType = 1;
        daily.eventRepeatOrNot = true;
        daily.eventStartDateYear = 2020;
        daily.eventStartDateMonth = 1;
        daily.eventStartDateDay = 1;
        daily.eventDateWhenEveryDayHour = (QTime::currentTime().hour() + 12) % 24;
        daily.eventNotiOrNot = true;
        Store store = Store::open();
        store.write([&] { store.add(daily); });
        Setting<bool>(kSwitchKey, true).set(true);
        setNotificationCenter(
            std::make_shared<LinuxNotificationCenter>(PendingRequests::defaultPath(), nullptr));
        for (int run = 0; run < 60; ++run) {
            // The agent runs its refresh while the app plans.
            QVERIFY(!center_->submit({bgFunc::kTaskIdentifier, wallClockNow()}));
            notiFunc().replanAllNotiRequests();
            // Returns once the agent is done.
            QCOMPARE(reschedule(25000).type(), QDBusMessage::ReplyMessage);
            // It did refresh: the next refresh is hours away.
            const auto tasks = center_->pendingRequests();
            QCOMPARE(tasks.size(), std::size_t(1));
            QVERIFY(tasks.front().earliestBeginDate > wallClockNow() + 3600);
            const auto pending = left();
            QCOMPARE(pending.size(), notiFunc::kMaximumRequests);
            for (std::size_t i = 1; i < pending.size(); ++i) {
                QVERIFY2(pending[i].fireAt - pending[i - 1].fireAt > 3600,
                         qPrintable(QString("run %1: two plans").arg(run)));
            }
        }
        setNotificationCenter(nullptr);
        store.write([&] { store.remove<eventInfo>("DAILY"); });
        center_->removeAllPending();
    }

private:
    static constexpr const char* kSwitchKey = "ALL_APP_switchOfNotiOpenOrNotForAllEvent";
};

QTEST_GUILESS_MAIN(ReminderDeliveryTest)
#include "test_reminder_delivery.moc"
