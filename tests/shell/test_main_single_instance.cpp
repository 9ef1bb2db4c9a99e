// One app per session on a private bus: a second start, with or without a tidemark: URL, hands
// over to the running app and ends with 0; the running app answers a URL with the haptic of
// feedbackd (played here by a recording stand-in). Every hand-over asks the running app to come
// forward with the later start's activation token.
#include "QtTestSupport.h"
#include "shell/SingleInstance.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QVariantMap>

using namespace tidemark;
using namespace tidemark::testing;

class FakeFeedback : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.sigxcpu.Feedback")
public:
    QStringList events;
    QStringList appIds;
public slots:
    Q_SCRIPTABLE int TriggerFeedback(const QString& appId, const QString& event, const QVariantMap&,
                                     int) {
        appIds << appId;
        events << event;
        return static_cast<int>(events.size());
    }
};

class SingleInstanceTest : public QObject {
    Q_OBJECT

private:
    QProcess bus_;
    QString address_;
    std::unique_ptr<IsolatedStorage> storage_;

    void startApp(QProcess& app, const QStringList& extra,
                  const QList<QPair<QString, QString>>& launcher = {}) {
        auto env = QProcessEnvironment::systemEnvironment();
        env.remove("XDG_ACTIVATION_TOKEN");
        env.remove("DESKTOP_STARTUP_ID");
        for (const auto& [name, value] : launcher) {
            env.insert(name, value);
        }
        env.insert("XDG_DATA_HOME", QString::fromStdString(storage_->dataHome().string()));
        env.insert("XDG_CONFIG_HOME", QString::fromStdString(storage_->configHome().string()));
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("DBUS_SESSION_BUS_ADDRESS", address_);
        app.setProcessEnvironment(env);
        app.start(TIDEMARK_APP_PATH, QStringList{"--now", "2026-03-10T08:00", "--time-zone",
                                                 "Europe/Berlin", "--locale", "en_US"} +
                                         extra);
    }
    bool nameOwned() {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(kAppBusName);
    }

private slots:
    void initTestCase() {
        bus_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        QVERIFY2(bus_.waitForStarted(), "dbus-daemon is not installed");
        QVERIFY(bus_.waitForReadyRead(10000));
        address_ = QString::fromLocal8Bit(bus_.readLine().trimmed());
        QVERIFY(!address_.isEmpty());
        qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toLocal8Bit());
        QVERIFY(QDBusConnection::sessionBus().isConnected());
        storage_ = std::make_unique<IsolatedStorage>();
    }
    void cleanupTestCase() {
        storage_.reset();
        bus_.terminate();
        bus_.waitForFinished();
    }

    void secondStartsHandOverAndAUrlGivesTheHaptic() {
        FakeFeedback feedback;
        auto bus = QDBusConnection::sessionBus();
        QVERIFY(bus.registerService("org.sigxcpu.Feedback"));
        QVERIFY(bus.registerObject("/org/sigxcpu/Feedback", &feedback,
                                   QDBusConnection::ExportScriptableSlots));

        QProcess first;
        startApp(first, {});
        QVERIFY(first.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(nameOwned(), 30000);

        QProcess second;
        startApp(second, {});
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(feedback.events, QStringList{}); // a plain second start only raises the window

        QProcess byUrl;
        startApp(byUrl, {"tidemark://event/ABC"});
        QVERIFY(byUrl.waitForFinished(20000));
        QCOMPARE(byUrl.exitCode(), 0);
        QTRY_COMPARE(feedback.events, QStringList{"button-pressed"});
        QCOMPARE(feedback.appIds, QStringList{"org.tidemark.TideMark"});

        QCOMPARE(first.state(), QProcess::Running);
        first.terminate();
        QVERIFY(first.waitForFinished(10000));
        // With the first gone, the name is free for the next start.
        QTRY_VERIFY(!nameOwned());
        bus.unregisterObject("/org/sigxcpu/Feedback");
        bus.unregisterService("org.sigxcpu.Feedback");
    }

    // The running side, played here: each kind of later start asks for the window with the token
    // its launcher gave it, Wayland's first, else the startup id.
    void everyHandOverBringsTheWindowWithTheLaterStartsToken() {
        SingleInstance owner;
        QCOMPARE(owner.claim({}), SingleInstance::Outcome::primary);
        QSignalSpy activations(&owner, &SingleInstance::activateRequested);
        QSignalSpy urls(&owner, &SingleInstance::urlOpened);
        QSignalSpy responses(&owner, &SingleInstance::notificationResponded);
        const QList<QPair<QStringList, QList<QPair<QString, QString>>>> starts = {
            {{"tidemark://event/ABC"},
             {{"XDG_ACTIVATION_TOKEN", "wayland-1"}, {"DESKTOP_STARTUP_ID", "wayland-1"}}},
            {{}, {{"DESKTOP_STARTUP_ID", "startup-2"}}},
            {{"--notification-response", "N1"}, {}},
        };
        for (const auto& [arguments, launcher] : starts) {
            QProcess later;
            startApp(later, arguments, launcher);
            // The owner answers on this event loop, so wait without blocking it.
            QTRY_COMPARE_WITH_TIMEOUT(later.state(), QProcess::NotRunning, 20000);
            QCOMPARE(later.exitCode(), 0);
        }
        QStringList tokens;
        for (const auto& call : activations) {
            tokens << call.first().toString();
        }
        QCOMPARE(tokens, (QStringList{"wayland-1", "startup-2", ""}));
        QCOMPARE(urls.size(), 1);
        QCOMPARE(responses.size(), 1);
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "test_main_single_instance.moc"
