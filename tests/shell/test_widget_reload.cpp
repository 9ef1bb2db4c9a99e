// Widget reloads travel as a broadcast on the session bus, after the data is in the shared suite.
// The test runs its own private bus.
#include "QtTestSupport.h"
#include "platform/linux/DBusWidgetCenter.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "records/realmDataFunc.h"

#include <QDBusConnection>
#include <QProcess>
#include <QTest>

using namespace tidemark;
using namespace tidemark::testing;

class ReloadListener : public QObject {
    Q_OBJECT
public:
    int reloads = 0;
    std::size_t bytesSeenAtLastReload = 0;
public slots:
    void onReload() {
        ++reloads;
        auto value = DefaultsSuite::named(kSharedSuiteName)->value(kWidgetDataKey);
        bytesSeenAtLastReload = value ? std::get<Bytes>(*value).size() : 0;
    }
};

class WidgetReloadTest : public QObject {
    Q_OBJECT

private:
    QProcess bus_;

private slots:
    void initTestCase() {
        bus_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        QVERIFY2(bus_.waitForStarted(), "dbus-daemon is not installed");
        QVERIFY(bus_.waitForReadyRead(10000));
        const QByteArray address = bus_.readLine().trimmed();
        QVERIFY(!address.isEmpty());
        // Before the first use of the session bus, so that the app's connection goes there.
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QVERIFY(QDBusConnection::sessionBus().isConnected());
    }
    void cleanupTestCase() {
        bus_.terminate();
        bus_.waitForFinished();
    }

    void everyEventChangeBroadcastsAReloadAfterTheData() {
        IsolatedStorage storage;
        setWidgetCenter(std::make_shared<DBusWidgetCenter>());
        auto listenerBus = QDBusConnection::connectToBus(
            QString::fromLocal8Bit(qgetenv("DBUS_SESSION_BUS_ADDRESS")), "listener");
        QVERIFY(listenerBus.isConnected());
        ReloadListener listener;
        QVERIFY(listenerBus.connect({}, kWidgetsObjectPath, kWidgetsInterface, kReloadSignal,
                                    &listener, SLOT(onReload())));

        eventObject event;
        event.eventId = "A";
        event.eventTitle = "Anniversary";
        realmDataFunc().addEventData(event);
        QTRY_COMPARE(listener.reloads, 1);
        const auto withOneEvent = listener.bytesSeenAtLastReload;
        QVERIFY(withOneEvent > 2);

        realmDataFunc().deleteEventData("A");
        QTRY_COMPARE(listener.reloads, 2);
        QCOMPARE(listener.bytesSeenAtLastReload, std::size_t(2)); // "[]"

        // Memos are not part of the widget data: no reload.
        realmDataFunc().addMemoData("A", "M", "t", "c", now());
        QTest::qWait(300);
        QCOMPARE(listener.reloads, 2);
        setWidgetCenter(nullptr);
        QDBusConnection::disconnectFromBus("listener");
    }
};

QTEST_GUILESS_MAIN(WidgetReloadTest)
#include "test_widget_reload.moc"
