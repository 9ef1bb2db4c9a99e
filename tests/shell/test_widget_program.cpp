// tidemark-widget against data the app publishes: --list-events prints what the configuration
// side offers or stops as it does, a widget window shows a note for the same bad data, a kept
// widget's settings and entries, tap, drag and right click on a widget window, the roll-over at
// midnight, and a running widget following an edit and a deletion through the bus and, without a
// bus, through the suite's files.
#include "TestSupport.h"
#include "base/Fatal.h"
#include "platform/linux/DBusWidgetCenter.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"
#include "widgetapp/WidgetModel.h"
#include "widgets/widgetFunc.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

Q_IMPORT_QML_PLUGIN(TideMark_WidgetPlugin)

using namespace tidemark;
using namespace tidemark::testing;

/// Takes the tidemark: links the process opens.
class LinkSink : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public slots:
    void open(const QUrl& url) { urls << url; }
};

namespace {

struct Run {
    QProcess::ExitStatus status;
    int code;
    QByteArray out;
    QByteArray err;
};

Run runWidget(const QStringList& arguments) {
    QProcess widget;
    widget.start(QStringLiteral(TIDEMARK_WIDGET_PATH), arguments);
    widget.waitForFinished(30000);
    return {widget.exitStatus(), widget.exitCode(), widget.readAllStandardOutput(),
            widget.readAllStandardError()};
}

eventObject published(const std::string& id, const std::string& title) {
    eventObject e;
    e.eventId = id;
    e.eventTitle = title;
    e.eventStartDateYear = 2030;
    e.eventStartDateMonth = 1;
    e.eventStartDateDay = 1;
    e.eventColorString = "colorForUserSelection03";
    return e;
}

} // namespace

class WidgetProgramTest : public QObject {
    Q_OBJECT

private:
    QProcess bus_;
    QByteArray busAddress_;

private slots:
    void initTestCase() {
        bus_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        QVERIFY2(bus_.waitForStarted(), "dbus-daemon is not installed");
        QVERIFY(bus_.waitForReadyRead(10000));
        busAddress_ = bus_.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", busAddress_);
    }
    void cleanupTestCase() {
        bus_.terminate();
        bus_.waitForFinished();
    }

    void listEventsPrintsThePublishedEventsInOrder() {
        IsolatedStorage storage;
        // Store order: the order of the adds, not of the ids or titles.
        realmDataFunc().addEventsData(
            {published("Z", "Dup"), published("A", ""), published("M", "Dup")});
        auto run = runWidget({"--list-events"});
        QCOMPARE(run.status, QProcess::NormalExit);
        QCOMPARE(run.code, 0);
        QCOMPARE(run.out, QByteArray("Z\tDup\nA\t\nM\tDup\n"));

        for (const auto* id : {"Z", "A", "M"}) {
            realmDataFunc().deleteEventData(id);
        }
        QCOMPARE(std::get<Bytes>(*DefaultsSuite::named(kSharedSuiteName)->value(kWidgetDataKey)),
                 Bytes({'[', ']'}));
        run = runWidget({"--list-events"});
        QCOMPARE(run.code, 0);
        QCOMPARE(run.out, QByteArray());
    }

    void badDataStopsTheListButNotTheWindow_data() {
        QTest::addColumn<QByteArray>("value"); // "-" removes the key
        QTest::addColumn<QByteArray>("message");
        const QByteArray nil(kNilMessage.data(), static_cast<int>(kNilMessage.size()));
        QTest::newRow("no key") << QByteArray("-") << nil;
        QTest::newRow("cut off") << QByteArray(R"([{"eventId":"A","eventTitle":"x")")
                                 << QByteArray("Can't decode the widget data: ");
        QTest::newRow("array of numbers")
            << QByteArray("[1,2]") << QByteArray("Can't decode the widget data: ");
    }
    void badDataStopsTheListButNotTheWindow() {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, message);
        IsolatedStorage storage;
        realmDataFunc().addEventData(published("A", "Kept"));
        auto* suite = DefaultsSuite::named(kSharedSuiteName);
        if (value == "-") {
            suite->removeValue(kWidgetDataKey);
        } else {
            suite->setValue(kWidgetDataKey, Bytes(value.begin(), value.end()));
        }
        auto run = runWidget({"--list-events"});
        QCOMPARE(run.status, QProcess::CrashExit);
        QVERIFY2(run.err.startsWith(message), run.err.constData());
        QCOMPARE(run.out, QByteArray());

        QTemporaryDir pictures;
        const auto picture = pictures.filePath("note.png");
        run = runWidget({"--size", "small", "--event", "A", "--screenshot", picture});
        QCOMPARE(run.status, QProcess::NormalExit);
        QCOMPARE(run.code, 0);
        QVERIFY2(run.err.contains("reloaded NoData"), run.err.constData());
        QVERIFY(QFile::exists(picture));
    }

    void aConfiguredWidgetIsKeptWithItsEntriesUntilRemoved() {
        IsolatedStorage storage;
        realmDataFunc().addEventsData({published("A", "First"), published("B", "Second")});
        WidgetModel widget(QStringLiteral("w1"), {QStringLiteral("lock"), {}, 0}, {});
        QCOMPARE(widget.status(), WidgetModel::Status::Unchosen);
        QCOMPARE(widget.eventOptions().size(), 2);
        // No such size or kind: the size stays, the kind is kept as not chosen.
        widget.configure(QStringLiteral("huge"), QStringLiteral("B"), 9);
        QCOMPARE(widget.status(), WidgetModel::Status::Ready);
        QCOMPARE(widget.event().value("title").toString(), QStringLiteral("Second"));

        const auto kept = WidgetModel::keptChoice(QStringLiteral("w1"));
        QVERIFY(kept);
        QCOMPARE(kept->size, QStringLiteral("lock"));
        QCOMPARE(kept->eventId, QStringLiteral("B"));
        QCOMPARE(kept->kind, 0);
        const QString name = QStringLiteral("/org.tidemark.TideMark.Widget-w1.desktop");
        const QStringList entries{
            QString::fromStdString((storage.dataHome() / "applications").string()) + name,
            QString::fromStdString((storage.configHome() / "autostart").string()) + name};
        for (const auto& path : entries) {
            QFile entry(path);
            QVERIFY2(entry.open(QIODevice::ReadOnly), qPrintable(path));
            QVERIFY(entry.readAll().contains("\" --id w1\n"));
            QProcess validate;
            validate.start("desktop-file-validate", {path});
            QVERIFY(validate.waitForFinished());
            QCOMPARE(validate.readAll(), QByteArray());
            QCOMPARE(validate.exitCode(), 0);
        }
        widget.removeWidget();
        QVERIFY(!WidgetModel::keptChoice(QStringLiteral("w1")));
        for (const auto& path : entries) {
            QVERIFY(!QFile::exists(path));
        }
    }

    void aTapOpensTheAppADragMovesARightClickConfigures() {
        IsolatedStorage storage;
        realmDataFunc().addEventData(published("A", "Tap"));
        WidgetModel model({}, {QStringLiteral("small"), QStringLiteral("A"), 0}, {});
        QQmlApplicationEngine engine;
        engine.setInitialProperties({{"model", QVariant::fromValue(&model)}});
        engine.load(QUrl("qrc:/TideMark/Widget/WidgetWindow.qml"));
        auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        LinkSink sink;
        QDesktopServices::setUrlHandler("tidemark", &sink, "open");
        const QPoint middle(window->width() / 2, window->height() / 2);

        QTest::mouseClick(window, Qt::LeftButton, {}, middle);
        QCOMPARE(sink.urls, QList<QUrl>{QUrl("tidemark:widget")});
        QTest::mousePress(window, Qt::LeftButton, {}, middle);
        QTest::mouseMove(window, middle + QPoint(30, 10));
        QTest::mouseRelease(window, Qt::LeftButton, {}, middle + QPoint(30, 10));
        QCOMPARE(sink.urls.size(), 1);
        auto* dialog = window->property("configureDialog").value<QQuickWindow*>();
        QVERIFY(dialog && !dialog->isVisible());
        QTest::mouseClick(window, Qt::RightButton, {}, middle);
        QTRY_VERIFY(dialog->isVisible());
        QCOMPARE(sink.urls.size(), 1);
        QDesktopServices::unsetUrlHandler("tidemark");
    }

    void theDayCountRollsOverAtLocalMidnight() {
        IsolatedStorage storage;
        realmDataFunc().addEventData(published("A", "Midnight"));
        // A zone whose midnight comes a few seconds from now.
        const qint64 west = (QDateTime::currentSecsSinceEpoch() + 6) % 86400;
        const auto zone = QStringLiteral("GMT-%1:%2:%3")
                              .arg(west / 3600, 2, 10, QLatin1Char('0'))
                              .arg(west % 3600 / 60, 2, 10, QLatin1Char('0'))
                              .arg(west % 60, 2, 10, QLatin1Char('0'));
        QProcess widget;
        widget.setProcessChannelMode(QProcess::MergedChannels);
        QByteArray log;
        connect(&widget, &QProcess::readyRead, this, [&] { log += widget.readAll(); });
        widget.start(QStringLiteral(TIDEMARK_WIDGET_PATH),
                     {"--size", "small", "--event", "A", "--time-zone", zone});
        QTRY_VERIFY_WITH_TIMEOUT(log.contains("reloaded Ready Midnight "), 5000);
        const int before = QRegularExpression("reloaded Ready Midnight (\\d+)")
                               .match(QString::fromUtf8(log))
                               .captured(1)
                               .toInt();
        QVERIFY2(before > 1, log.constData());
        QTRY_VERIFY2_WITH_TIMEOUT(
            log.contains("reloaded Ready Midnight " + QByteArray::number(before - 1)),
            log.constData(), 15000);
        widget.terminate();
        QVERIFY(widget.waitForFinished(10000));
    }

    void aRunningWidgetFollowsEditsAndDeletion_data() {
        QTest::addColumn<bool>("withBus");
        QTest::newRow("reload signal") << true;
        QTest::newRow("file watch alone") << false;
    }
    void aRunningWidgetFollowsEditsAndDeletion() {
        QFETCH(bool, withBus);
        IsolatedStorage storage;
        setWidgetCenter(std::make_shared<DBusWidgetCenter>());
        realmDataFunc().addEventData(published("A", "Before"));

        QProcess widget;
        auto env = QProcessEnvironment::systemEnvironment();
        if (!withBus) {
            env.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        }
        widget.setProcessEnvironment(env);
        widget.setProcessChannelMode(QProcess::MergedChannels);
        QByteArray log;
        connect(&widget, &QProcess::readyRead, this, [&] { log += widget.readAll(); });
        widget.start(QStringLiteral(TIDEMARK_WIDGET_PATH), {"--size", "medium", "--event", "A"});
        QVERIFY(widget.waitForStarted());
        QTRY_VERIFY2_WITH_TIMEOUT(log.contains("reloaded Ready Before"), log.constData(), 20000);
        QTest::qWait(300); // past the first reloads of a starting widget

        const auto stored = *Store::open().object<eventInfo>("A");
        realmDataFunc().editEventData(stored, "eventTitle", std::string("After"));
        QTRY_VERIFY2_WITH_TIMEOUT(log.contains("reloaded Ready After"), log.constData(), 5000);

        if (withBus) {
            // The signal alone, with nothing changed on disk, makes a reload.
            const auto reloads = log.count("reloaded");
            DBusWidgetCenter().reloadAllTimelines();
            QTRY_COMPARE_WITH_TIMEOUT(log.count("reloaded"), reloads + 1, 5000);
        }

        realmDataFunc().deleteEventData("A");
        QTRY_VERIFY2_WITH_TIMEOUT(log.contains("reloaded Deleted"), log.constData(), 5000);

        widget.terminate();
        QVERIFY(widget.waitForFinished(10000));
        setWidgetCenter(nullptr);
    }
};

QTEST_MAIN(WidgetProgramTest)
#include "test_widget_program.moc"
