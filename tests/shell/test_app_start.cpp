// Starts the real app offscreen on empty folders and looks at what it leaves behind.
#include "QtTestSupport.h"
#include "RecordSupport.h"
#include "records/Defaults.h"
#include "records/EventJson.h"
#include "records/PrivateFiles.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"

#include <QProcess>
#include <QTest>
#include <fstream>
#include <nlohmann/json.hpp>

using namespace tidemark;
using namespace tidemark::testing;

class AppStartTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<IsolatedStorage> storage_;

    int startApp(const QStringList& extra = {}, QString* errorOutput = nullptr) {
        QProcess app;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_DATA_HOME", QString::fromStdString(storage_->dataHome().string()));
        env.insert("XDG_CONFIG_HOME", QString::fromStdString(storage_->configHome().string()));
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.remove("DBUS_SESSION_BUS_ADDRESS");
        app.setProcessEnvironment(env);
        app.start(TIDEMARK_APP_PATH,
                  QStringList{"--quit-after-first-frame", "--now", "2026-03-10T08:00",
                              "--time-zone", "Europe/Berlin", "--locale", "en_US"} +
                      extra);
        if (!app.waitForFinished(60000)) {
            app.kill();
            return -1;
        }
        if (errorOutput) {
            *errorOutput = QString::fromLocal8Bit(app.readAllStandardError());
        }
        return app.exitStatus() == QProcess::NormalExit ? app.exitCode() : -1;
    }

private slots:
    void init() { storage_ = std::make_unique<IsolatedStorage>(); }
    void cleanup() { storage_.reset(); }

    void firstStartLeavesTheSamplesAndTheWidgetData() {
        QCOMPARE(startApp(), 0);

        QVERIFY(std::filesystem::exists(storage_->dataHome() / "tidemark" / "default.sqlite"));
        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), std::size_t(2));
        QCOMPARE(events[0].eventStartDateYear, std::int64_t(2027));
        QCOMPARE(events[1].eventStartDateDay, std::int64_t(11));
        QCOMPARE(events[1].eventTitle, std::string("Welcome to Tide Mark"));
        QVERIFY(std::filesystem::exists(storage_->configHome() / "tidemark" / "defaults.sqlite"));
        QCOMPARE(Setting<bool>("userLaunchStatus", false).get(), true);

        auto* suite = DefaultsSuite::named(kSharedSuiteName);
        QVERIFY(suite);
        QVERIFY(std::filesystem::exists(storage_->dataHome() / "group.marlowharbor.tideMark" /
                                        "defaults.sqlite"));
        const auto bytes = std::get<Bytes>(suite->value(kWidgetDataKey).value());
        const auto json = nlohmann::json::parse(bytes.begin(), bytes.end());
        QVERIFY(json.is_array());
        QCOMPARE(json.size(), std::size_t(2));
        for (const auto& object : json) {
            QCOMPARE(object.size(), std::size_t(32));
        }
        QVERIFY(decodeWidgetEventArray(std::string(bytes.begin(), bytes.end())).has_value());

        // A second start adds nothing, and publishes the events again for widgets that lost
        // them.
        suite->removeValue(kWidgetDataKey);
        QCOMPARE(startApp(), 0);
        QCOMPARE(Store::open().count<eventInfo>(), std::int64_t(2));
        QCOMPARE(publishedEvents().size(), std::size_t(2));
    }

    // A settings file that is no database is kept aside once; the first-launch work runs once,
    // as on a new installation, not at every start.
    void aDamagedSettingsFileIsKeptAsideOnce_data() {
        QTest::addColumn<bool>("folder");
        QTest::newRow("garbage") << false;
        QTest::newRow("folder") << true;
    }
    void aDamagedSettingsFileIsKeptAsideOnce() {
        QFETCH(bool, folder);
        const auto settings = storage_->configHome() / "tidemark" / "defaults.sqlite";
        DefaultsSuite::standard(); // made by the storage; let go of it before damaging it
        std::filesystem::remove_all(settings.parent_path());
        std::filesystem::create_directories(folder ? settings : settings.parent_path());
        if (!folder) {
            std::ofstream(settings) << std::string(3000, '\x7f');
        }
        for (int start = 0; start < 3; ++start) {
            QCOMPARE(startApp(), 0);
            QVERIFY(!std::filesystem::exists(damagedFileNoticesPath())); // shown, so taken
        }
        QCOMPARE(Store::open().count<eventInfo>(), std::int64_t(2));
        int aside = 0;
        for (const auto& entry : std::filesystem::directory_iterator(settings.parent_path())) {
            aside += entry.path().filename().string().starts_with("defaults.sqlite.damaged-") &&
                     !entry.path().string().ends_with("-wal") &&
                     !entry.path().string().ends_with("-shm");
        }
        QCOMPARE(aside, 1);
    }

    void badOptionsAreExplained_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("now") << QStringList{"--now", "yesterday"} << "--now takes a local time";
        QTest::newRow("month 13") << QStringList{"--now", "2026-13-01T08:00"}
                                  << "names no valid time";
        QTest::newRow("weekday") << QStringList{"--first-weekday", "8"} << "--first-weekday takes";
    }
    void badOptionsAreExplained() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QString errors;
        QCOMPARE(startApp(arguments, &errors), 2);
        QVERIFY2(errors.contains(message), qPrintable(errors));
        QVERIFY(!std::filesystem::exists(storage_->dataHome() / "tidemark" / "default.sqlite"));
    }
};

QTEST_GUILESS_MAIN(AppStartTest)
#include "test_app_start.moc"
