// The cloud end to end: cloudKitFunc, addEditAndDelDataAtCloud and realmDataFunc through the
// WebDAV service against real servers on loopback (Apache httpd with mod_dav, and rclone), with
// the app's main queue on this test's event loop and the real delays of the account check; then
// the app's own --cloud-backup and --cloud-restore. A private session bus with no Secret Service
// on it: passwords live in memory, and the headless runs get theirs from the environment or
// standard input.
#include "LoopbackDav.h"
#include "TestSupport.h"
#include "cloud/CloudRecordMapping.h"
#include "cloud/addEditAndDelDataAtCloud.h"
#include "cloud/cloudKitFunc.h"
#include "platform/linux/CloudAccount.h"
#include "platform/linux/QtDispatcher.h"
#include "platform/linux/WebDavCloudService.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"

#include <QDirIterator>
#include <QTest>
#include <algorithm>
#include <atomic>
#include <csignal>
#include <future>
#include <thread>

using namespace tidemark;
using namespace tidemark::testing;
namespace fs = std::filesystem;

namespace {

const DavUser kAlice{"alice", "s3cret-Tide-Pass"};
const DavUser kBob{"bob", "another-Tide-Pass"};
constexpr const char* kAliceAtServer = "alice@127.0.0.1";

/// An event with every field set, most of them differing from event to event: texts with
/// characters that need escaping, numbers that name real types, and one beyond a double's range.
eventInfo sampleEvent(int i) {
    eventInfo e;
    const auto fill = [i](auto& value, std::string_view name) {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::string>) {
            value = std::string(name) + " " + std::to_string(i) + " – 潮汐\nline \"two\"\t\\";
        } else if constexpr (std::is_same_v<T, bool>) {
            value = (i + name.size()) % 2 == 0;
        } else if constexpr (std::is_same_v<T, std::int64_t>) {
            value = name == "backupDataType01" ? -9007199254740993 - i
                                               : static_cast<std::int64_t>(i + name.size()) % 5;
        } else {
            value = Bytes{0x62, 0x70, 0x00, 0xff, static_cast<std::uint8_t>(i)};
        }
    };
    std::apply([&](const auto&... f) { (fill(e.*f.member, f.name), ...); }, EventFields::fields());
    e.eventId = QStringLiteral("E-%1").arg(i, 5, 10, QChar('0')).toStdString();
    return e;
}

memoDataForNotiObject sampleMemo(int i) {
    return {"M/" + std::to_string(i) + "%25",
            sampleEvent(i).eventId,
            "2026-03-10 / 08:00",
            "Memo " + std::to_string(i),
            "Ebbe und Flut – 干潮",
            i,
            "",
            "x"};
}

/// Writes `count` events and a memo for each in one transaction into the store at `path`.
void storeEventsAndMemos(const fs::path& path, int count) {
    auto store = Store::open(path);
    store.write([&] {
        for (int i = 0; i < count; ++i) {
            store.add(sampleEvent(i));
            store.add(sampleMemo(i));
        }
    });
}

/// The records of the store at `path`, by primary key.
template <class Record> std::vector<Record> held(const fs::path& path) {
    auto records = Store::open(path).objects<Record>();
    const auto key = std::get<0>(Record::fields()).member;
    std::sort(records.begin(), records.end(),
              [key](const Record& a, const Record& b) { return a.*key < b.*key; });
    return records;
}

} // namespace

class CloudBackupTest : public QObject {
    Q_OBJECT

    std::unique_ptr<IsolatedStorage> storage_;
    QProcess bus_;
    std::unique_ptr<ApacheDav> apache_;
    std::unique_ptr<RcloneDav> rclone_;
    cloudKitFunc cloud_;
    int stores_ = 0;

    LoopbackDav& server(const QString& kind) {
        return kind == "rclone" ? static_cast<LoopbackDav&>(*rclone_) : *apache_;
    }
    void useAccount(const QString& kind, const DavUser& user = kAlice) {
        CloudAccount account;
        QVERIFY(account.setServerAddress(server(kind).address()));
        account.setUserName(QString::fromUtf8(user.name));
        account.keepPasswordInMemory(QString::fromUtf8(user.password));
    }
    /// A store file of its own, empty, as the default store.
    fs::path freshStore() {
        const fs::path path = storage_->root() / "stores" / (std::to_string(++stores_) + ".sqlite");
        setDefaultStorePath(path);
        return path;
    }
    QString zoneFolder(const QString& kind, const char* zone) {
        return QStringLiteral("%1/%2/%3").arg(server(kind).davRoot(), kCloudContainerName, zone);
    }
    int filesIn(const QString& kind, const char* zone) {
        return int(QDir(zoneFolder(kind, zone)).entryList({"*.json"}, QDir::Files).size());
    }
    /// Both zones there and empty.
    void emptyZones(const QString& kind) {
        for (const char* zone : {"eventZone", "memoZone"}) {
            QDir(zoneFolder(kind, zone)).removeRecursively();
            std::promise<std::optional<CloudError>> made;
            cloudService().saveZone(zone, [&](std::optional<CloudError> e) { made.set_value(e); });
            const auto error = made.get_future().get();
            QVERIFY2(!error, error ? error->message.c_str() : "");
        }
    }
    /// The device as after a healthy check with alice: nothing else.
    void healthyDevice() {
        cloud_.cloudkitFuncStatus = false;
        cloud_.errorStringForiCloudDataTask = std::string();
        cloud_.userCloudAccStatus = true;
        cloud_.userIdInfoAtThisDevice = std::string(kAliceAtServer);
        cloud_.cloudFuncNotActiveBecauseIdChanged = false;
        cloud_.eventZoneStatuAtThisDevice = true;
        cloud_.memoZoneStatuAtThisDevice = true;
    }
    /// The whole check, with its real delays, and a little time for the last answers.
    void check() {
        cloud_.checkCloudAccountAndZones();
        QTest::qWait(2600);
    }
    /// Restores every memo and event into the default store as the cloud page does; returns the
    /// records read.
    std::size_t restore() {
        struct Count {
            std::atomic<int> finished{0};
            std::atomic<std::size_t> read{0};
        };
        auto count = std::make_shared<Count>();
        auto report = [count](const CloudProgress& p) {
            if (p.finished) {
                count->read += p.done;
                ++count->finished;
            }
        };
        addEditAndDelDataAtCloud transfer;
        transfer.downloadAllMemosFromCloud(report);
        transfer.downloadAllEventsFromCloud(report);
        (void)QTest::qWaitFor([&] { return count->finished == 2; }, 60000);
        return count->finished == 2 ? count->read.load() : 0;
    }
    /// Backs up the default store; a wait that ends in no answer is a hang, which fails the
    /// test.
    static CloudUploadOutcome upload(addEditAndDelDataAtCloud& transfer,
                                     CloudProgressHandler progress = {}) {
        const CloudUpload upload = transfer.uploadAllDataToCloud(std::move(progress));
        auto waiting = std::async(std::launch::async, [upload] { return upload.wait(); });
        if (waiting.wait_for(std::chrono::seconds(60)) != std::future_status::ready) {
            qFatal("The backup's operations gave no answer within 60 seconds");
        }
        return waiting.get();
    }

private slots:
    void initTestCase() {
        storage_ = std::make_unique<IsolatedStorage>();
        QVERIFY2(isolateCloudSession(bus_, QString::fromStdString(storage_->root().string())),
                 "dbus-daemon is not installed");
        apache_ = std::make_unique<ApacheDav>(std::vector<DavUser>{kAlice, kBob});
        rclone_ = std::make_unique<RcloneDav>(kAlice);
        QVERIFY(apache_->start());
        QVERIFY(rclone_->start());
        setMainQueue(std::make_shared<QtMainQueue>(this));
        setCloudService(std::make_shared<WebDavCloudService>());
    }
    void cleanupTestCase() {
        setCloudService(nullptr);
        setMainQueue(nullptr);
        rclone_.reset();
        apache_.reset();
        bus_.terminate();
        bus_.waitForFinished();
        storage_.reset();
    }

    void theCheckAdoptsTheFirstUserMakesZonesAndRefusesAnother_data() {
        QTest::addColumn<QString>("server");
        QTest::addColumn<bool>("freshDevice"); // else alice is adopted, zones known
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QStringList>("codes"); // after each check, the switch turned on before it
        QTest::addColumn<QList<bool>>("switchOn");
        QTest::newRow("fresh device, Apache: zones made, then healthy")
            << "apache" << true << kAlice.name << QStringList{"1100", ""}
            << QList<bool>{false, true};
        QTest::newRow("fresh device, rclone: zones made, then healthy")
            << "rclone" << true << kAlice.name << QStringList{"1100", ""}
            << QList<bool>{false, true};
        QTest::newRow("another user on the server: off, the adopted one stays")
            << "apache" << false << kBob.name << QStringList{"1018"} << QList<bool>{false};
    }
    void theCheckAdoptsTheFirstUserMakesZonesAndRefusesAnother() {
        QFETCH(QString, server);
        QFETCH(bool, freshDevice);
        QFETCH(QByteArray, user);
        QFETCH(QStringList, codes);
        QFETCH(QList<bool>, switchOn);
        healthyDevice();
        if (freshDevice) {
            cloud_.userCloudAccStatus = false;
            cloud_.userIdInfoAtThisDevice = std::string();
            cloud_.eventZoneStatuAtThisDevice = false;
            cloud_.memoZoneStatuAtThisDevice = false;
            QDir(this->server(server).davRoot() + "/" + kCloudContainerName).removeRecursively();
        }
        useAccount(server, user == kBob.name ? kBob : kAlice);
        for (qsizetype i = 0; i < codes.size(); ++i) {
            cloud_.cloudkitFuncStatus = true;
            check();
            QCOMPARE(QString::fromStdString(cloud_.errorStringForiCloudDataTask.get()), codes[i]);
            QCOMPARE(cloud_.cloudkitFuncStatus.get(), switchOn[i]);
            QCOMPARE(cloud_.userIdInfoAtThisDevice.get(), std::string(kAliceAtServer));
            QTRY_VERIFY(cloud_.eventZoneStatuAtThisDevice.get() &&
                        cloud_.memoZoneStatuAtThisDevice.get());
        }
        QCOMPARE(cloud_.cloudFuncNotActiveBecauseIdChanged.get(), user == kBob.name);
        for (const char* zone : {"eventZone", "memoZone"}) {
            QVERIFY2(QFileInfo(zoneFolder(server, zone)).isDir(), zone);
        }
    }

    void aBackupWritesEveryRecordAndARestoreGivesThemBack_data() {
        QTest::addColumn<QString>("server");
        QTest::addColumn<int>("events"); // and as many memos
        QTest::newRow("Apache, nothing") << "apache" << 0;
        QTest::newRow("Apache, one full batch") << "apache" << 390;
        QTest::newRow("Apache, a full batch and one") << "apache" << 391;
        QTest::newRow("rclone, a full batch and one") << "rclone" << 391;
    }
    void aBackupWritesEveryRecordAndARestoreGivesThemBack() {
        QFETCH(QString, server);
        QFETCH(int, events);
        healthyDevice();
        useAccount(server);
        emptyZones(server);
        const fs::path original = freshStore();
        storeEventsAndMemos(original, events);

        addEditAndDelDataAtCloud transfer;
        int pauses = 0; // the real pause, counted
        transfer.pauseAfterFullBatch = [&](std::chrono::milliseconds pause) {
            ++pauses;
            std::this_thread::sleep_for(pause);
        };
        std::vector<CloudProgress> reports;
        const auto outcome = upload(transfer, [&](auto p) { reports.push_back(p); });
        QVERIFY2(!outcome.firstError,
                 outcome.firstError ? outcome.firstError->message.c_str() : "");
        QCOMPARE(outcome.recordsWritten, std::size_t(2 * events));
        QCOMPARE(pauses, 2 * (events / 390));
        QVERIFY(!reports.empty() && reports.back().finished);
        QCOMPARE(reports.back().done, std::size_t(2 * events));
        QCOMPARE(filesIn(server, "eventZone"), events);
        QCOMPARE(filesIn(server, "memoZone"), events);

        const fs::path restored = freshStore();
        QCOMPARE(restore(), std::size_t(2 * events));
        QVERIFY(held<eventInfo>(restored) == held<eventInfo>(original));
        QVERIFY(held<memoDataForNotiObject>(restored) == held<memoDataForNotiObject>(original));
        QCOMPARE(held<eventInfo>(restored).size(), std::size_t(events));
        QVERIFY(!transfer.loadingViewToggleForCloudkitPageDownloadButton.get());
    }

    void eachChangeReachesTheServerWhileTheSwitchIsOn_data() {
        QTest::addColumn<QString>("server");
        QTest::newRow("Apache") << "apache";
        QTest::newRow("rclone") << "rclone";
    }
    void eachChangeReachesTheServerWhileTheSwitchIsOn() {
        QFETCH(QString, server);
        healthyDevice();
        useAccount(server);
        emptyZones(server);
        freshStore();
        const QString eventFile = zoneFolder(server, "eventZone") + "/E-00007.json";
        auto onServer = [&]() -> std::optional<eventObject> {
            const auto record =
                decodeCloudRecordJson(readAll(eventFile).toStdString(), "eventZone");
            return record ? std::optional(eventObjectFromCloudRecord(*record)) : std::nullopt;
        };
        cloud_.cloudkitFuncStatus = true;
        realmDataFunc store;
        const auto added = eventAs<eventObject>(sampleEvent(7));
        store.addEventData(added);
        QTRY_VERIFY(onServer() == added);

        store.editEventData(sampleEvent(7), "eventTitle", "Neap tide");
        auto edited = added;
        edited.eventTitle = "Neap tide";
        QTRY_VERIFY(onServer() == edited);

        store.addMemoData("E-00007", "M1", "title", "content", now());
        QTRY_COMPARE(filesIn(server, "memoZone"), 1);
        store.deleteMemoData("M1");
        store.deleteEventData("E-00007");
        QTRY_VERIFY(!QFile::exists(eventFile));
        QTRY_COMPARE(filesIn(server, "memoZone"), 0);

        cloud_.cloudkitFuncStatus = false;
        store.addEventData(added); // nothing goes up with the switch off
        QTest::qWait(300);
        QVERIFY(!QFile::exists(eventFile));
    }

    void aServerKilledDuringABackupGivesAnErrorAndLeavesTheStore() {
        healthyDevice();
        useAccount("apache");
        emptyZones("apache");
        const fs::path path = freshStore();
        storeEventsAndMemos(path, 1000);
        const auto events = held<eventInfo>(path);
        const auto memos = held<memoDataForNotiObject>(path);

        addEditAndDelDataAtCloud transfer;
        transfer.pauseAfterFullBatch = [group = apache_->group()](std::chrono::milliseconds) {
            ::kill(-group, SIGKILL); // while the first batch is on its way
        };
        const auto outcome = upload(transfer);
        apache_->kill();
        QVERIFY(apache_->start());
        QVERIFY(outcome.firstError);
        QVERIFY2(outcome.firstError->message.find("can't be reached") != std::string::npos,
                 outcome.firstError->message.c_str());
        QVERIFY(outcome.recordsWritten < 2000);
        QVERIFY(held<eventInfo>(path) == events);
        QVERIFY(held<memoDataForNotiObject>(path) == memos);
    }

    void theHeadlessCommandsBackUpAndRestore_data() {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("passwordFrom"); // "environment", "input" or "" for none
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<QString>("printed");
        QTest::newRow("backup, password from the environment")
            << "--cloud-backup" << 0 << "environment" << kAlice.password << "10 records written\n";
        QTest::newRow("restore into an empty store, password on standard input")
            << "--cloud-restore" << 0 << "input" << kAlice.password << "10 records read\n";
        QTest::newRow("wrong password") << "--cloud-backup" << 1 << "environment"
                                        << QByteArray("wrong") << "0 records written\ncode 1003\n";
        QTest::newRow("no password at all")
            << "--cloud-restore" << 1 << "" << QByteArray() << "0 records read\ncode 1003\n";
    }
    void theHeadlessCommandsBackUpAndRestore() {
        QFETCH(QString, command);
        QFETCH(int, exitCode);
        QFETCH(QString, passwordFrom);
        QFETCH(QByteArray, password);
        QFETCH(QString, printed);
        healthyDevice();
        // The app's data folder: for a backup, one with five events and their memos.
        const fs::path data = storage_->root() / ("app" + std::to_string(++stores_));
        const fs::path store = data / "tidemark" / "default.sqlite";
        useAccount("apache");
        emptyZones("apache");
        if (command == "--cloud-backup") {
            storeEventsAndMemos(store, 5);
        } else { // the server holds them
            storeEventsAndMemos(freshStore(), 5);
            addEditAndDelDataAtCloud transfer;
            QVERIFY(!upload(transfer).firstError);
        }
        QProcess app;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", QString::fromStdString(data.string()));
        environment.remove("TIDEMARK_CLOUD_PASSWORD");
        if (passwordFrom == "environment") {
            environment.insert("TIDEMARK_CLOUD_PASSWORD", QString::fromUtf8(password));
        }
        app.setProcessEnvironment(environment);
        app.setProcessChannelMode(QProcess::SeparateChannels);
        app.start(TIDEMARK_APP_PATH, {command});
        QVERIFY(app.waitForStarted());
        if (passwordFrom == "input") {
            app.write(password + "\n");
        }
        app.closeWriteChannel();
        QVERIFY(app.waitForFinished(60000));
        const QString out = QString::fromUtf8(app.readAllStandardOutput());
        QVERIFY2(out == printed, qPrintable(out + app.readAllStandardError()));
        QCOMPARE(app.exitStatus(), QProcess::NormalExit);
        QCOMPARE(app.exitCode(), exitCode);
        if (exitCode == 0 && command == "--cloud-backup") {
            QCOMPARE(filesIn("apache", "eventZone"), 5);
            QCOMPARE(filesIn("apache", "memoZone"), 5);
        } else if (exitCode == 0) {
            std::vector<eventInfo> expected;
            for (int i = 0; i < 5; ++i) {
                expected.push_back(sampleEvent(i));
            }
            QVERIFY(held<eventInfo>(store) == expected);
            QCOMPARE(held<memoDataForNotiObject>(store).size(), std::size_t(5));
        }
    }

    void noPasswordReachesAnyFile() {
        QDirIterator files(QString::fromStdString(storage_->root().string()), QDir::Files,
                           QDirIterator::Subdirectories);
        int read = 0;
        while (files.hasNext()) {
            const QByteArray content = readAll(files.next());
            ++read;
            for (const auto& user : {kAlice, kBob}) {
                for (const auto& secret : {user.password, user.password.toBase64(),
                                           (user.name + ":" + user.password).toBase64()}) {
                    QVERIFY2(!content.contains(secret), qPrintable(files.filePath()));
                }
            }
        }
        QVERIFY(read > 10);
        QVERIFY(!apache_->errorLog().contains(QString::fromUtf8(kAlice.password)));
    }
};

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    CloudBackupTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_cloud_backup.moc"
