// The WebDAV cloud service against a real Apache httpd with mod_dav on a loopback port
// (LoopbackDav.h), for what the end-to-end cloud test doesn't reach: multistatus replies, the
// account status per credentials, a record changed between read and write, unreadable records,
// certificates, a silent server and a service destroyed while busy. Every call is awaited from a
// blocked main thread, as a blocking worker would call.
#include "LoopbackDav.h"
#include "TestSupport.h"
#include "platform/linux/CloudAccount.h"
#include "platform/linux/WebDavCloudService.h"
#include "platform/linux/WebDavMultistatus.h"

#include <QSslCertificate>
#include <QTcpServer>
#include <QTest>
#include <future>
#include <thread>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

constexpr const char* kUser = "alice";
constexpr const char* kPassword = "s3cret-Tide-Pass";

/// Waits for a completion of the service; checks that it came once and on another thread than
/// the call's (so never inside the call).
template <class Result> class Awaited {
public:
    template <class... Args> auto callback() {
        return [this](Args... args) {
            if (std::this_thread::get_id() == caller_) {
                qFatal("A completion ran on the caller's thread");
            }
            promise_.set_value(Result{std::move(args)...}); // throws when called twice
        };
    }
    Result get() {
        if (future_.wait_for(std::chrono::seconds(60)) != std::future_status::ready) {
            qFatal("The cloud service gave no answer within 60 seconds");
        }
        return future_.get();
    }

private:
    std::thread::id caller_ = std::this_thread::get_id();
    std::promise<Result> promise_;
    std::future<Result> future_ = promise_.get_future();
};

template <class Result, class... Args, class Call> Result await(Call call) {
    Awaited<Result> awaited;
    call(awaited.template callback<Args...>());
    return awaited.get();
}

using Status = std::pair<CloudAccountStatus, std::optional<CloudError>>;
using Fetched = std::pair<std::optional<CloudRecord>, std::optional<CloudError>>;
using Page = std::tuple<std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                        std::optional<CloudError>>;

CloudRecord eventRecord(const std::string& name, const std::string& title) {
    return {"eventInfo",
            {"eventZone", name},
            {{"eventTitle", title},
             {"eventStartDateYear", std::int64_t{2026}},
             {"eventRepeatOrNot", std::int64_t{1}},
             {"eventDateWhenEveryWeek", Bytes{0x62, 0x70, 0x6c, 0x00, 0xff}},
             {"eventDateWhenEveryMonth", Bytes{}},
             {"eventContent", std::string("Gezeiten – 潮汐")},
             {"backupDataType01", std::int64_t{-9007199254740993}}}};
}

} // namespace

class WebDavTest : public QObject {
    Q_OBJECT

    std::unique_ptr<IsolatedStorage> storage_;
    QProcess bus_;
    std::unique_ptr<ApacheDav> apache_;
    std::unique_ptr<WebDavCloudService> service_;
    CloudAccount account_;

    void setAccount(const QUrl& address, const QString& user, const char* password) {
        account_.setServerAddress(address);
        account_.setUserName(user);
        if (password) {
            QObject context;
            std::atomic<bool> answered{false};
            account_.setPassword(password, &context, [&](bool) { answered = true; });
            QTRY_VERIFY_WITH_TIMEOUT(answered, 30000);
        }
    }
    std::optional<CloudError> modify(std::vector<CloudRecord> save,
                                     std::vector<CloudRecordId> remove = {}) {
        return await<std::optional<CloudError>, std::optional<CloudError>>(
            [&](auto done) { service_->modifyRecords(save, remove, done); });
    }
    Fetched fetch(const std::string& zone, const std::string& name) {
        return await<Fetched, std::optional<CloudRecord>, std::optional<CloudError>>(
            [&](auto done) {
                service_->fetchRecord({zone, name}, done);
            });
    }
    Page query(const std::string& type, std::optional<CloudQueryCursor> cursor, std::size_t limit) {
        return await<Page, std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                     std::optional<CloudError>>(
            [&](auto done) { service_->queryRecords(type, cursor, limit, done); });
    }
    Status accountStatus() {
        return await<Status, CloudAccountStatus, std::optional<CloudError>>(
            [&](auto done) { service_->accountStatus(done); });
    }
    QString recordFile(const char* zone, const QString& name) const {
        return QStringLiteral("%1/%2/%3/%4.json")
            .arg(apache_->davRoot(), kCloudContainerName, zone, name);
    }
    /// Makes the zones of the container.
    void makeZones() {
        for (const char* zone : {"eventZone", "memoZone"}) {
            const auto error = await<std::optional<CloudError>, std::optional<CloudError>>(
                [&](auto done) { service_->saveZone(zone, done); });
            QVERIFY2(!error, error ? error->message.c_str() : "");
        }
    }

private slots:
    void initTestCase() {
        storage_ = std::make_unique<IsolatedStorage>();
        QVERIFY2(isolateCloudSession(bus_, QString::fromStdString(storage_->root().string())),
                 "dbus-daemon is not installed");

        apache_ = std::make_unique<ApacheDav>(std::vector<DavUser>{{kUser, kPassword}});
        QVERIFY(apache_->start());
        service_ = std::make_unique<WebDavCloudService>();
    }
    void cleanupTestCase() {
        service_.reset();
        apache_.reset();
        bus_.terminate();
        bus_.waitForFinished();
        storage_.reset();
    }

    void multistatusRepliesAreReadByNamespaceAndDecoded_data() {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("read"); // name|collection|etag|principal per resource, or "!"
        QTest::newRow("prefixed, absolute href, 404 propstat ignored")
            << QByteArray(R"(<?xml version="1.0"?><D:multistatus xmlns:D="DAV:"><D:response>)"
                          R"(<D:href>https://h/dav/a%20b%2Fc.json</D:href><D:propstat><D:prop>)"
                          R"(<D:getetag>"1-2"</D:getetag><D:resourcetype/></D:prop>)"
                          R"(<D:status>HTTP/1.1 200 OK</D:status></D:propstat><D:propstat>)"
                          R"(<D:prop><D:current-user-principal/><D:getetag>"x"</D:getetag>)"
                          R"(</D:prop><D:status>HTTP/1.1 404 Not Found</D:status></D:propstat>)"
                          R"(</D:response></D:multistatus>)")
            << R"(a b/c.json|0|"1-2"|)";
        QTest::newRow("default namespace, principal, collection")
            << QByteArray(R"(<multistatus xmlns="DAV:"><response><href>/dav/z/</href>)"
                          R"(<propstat><status>HTTP/1.1 200 OK</status><prop><resourcetype>)"
                          R"(<collection/></resourcetype><current-user-principal><href>)"
                          R"(/principals/users/al%C3%AFce/</href></current-user-principal>)"
                          R"(</prop></propstat></response></multistatus>)")
            << "z|1||/principals/users/alïce/";
        QTest::newRow("DAV names in another namespace don't count")
            << QByteArray(R"(<D:multistatus xmlns:D="DAV:" xmlns:X="urn:x"><D:response>)"
                          R"(<D:href>/a</D:href><D:propstat><D:prop><X:resourcetype>)"
                          R"(<D:collection/></X:resourcetype></D:prop><D:status>HTTP/1.1 200)"
                          R"( OK</D:status></D:propstat></D:response></D:multistatus>)")
            << "a|0||";
        QTest::newRow("cut off") << QByteArray(R"(<D:multistatus xmlns:D="DAV:"><D:response>)")
                                 << "!";
        QTest::newRow("another root") << QByteArray(R"(<multistatus xmlns="urn:x"/>)") << "!";
        QTest::newRow("response without href")
            << QByteArray(R"(<D:multistatus xmlns:D="DAV:"><D:response/></D:multistatus>)") << "!";
        QTest::newRow("entity declarations")
            << QByteArray(R"(<!DOCTYPE m [<!ENTITY a "aaaa">]><D:multistatus xmlns:D="DAV:">)"
                          R"(<D:response><D:href>&a;</D:href></D:response></D:multistatus>)")
            << "!";
        QTest::newRow("empty") << QByteArray() << "!";
    }
    void multistatusRepliesAreReadByNamespaceAndDecoded() {
        QFETCH(QByteArray, xml);
        QFETCH(QString, read);
        const auto result = readMultistatus(xml);
        if (read == "!") {
            QVERIFY(result.resources.empty());
            QVERIFY(result.error.startsWith("The server's multistatus reply can't be read"));
            return;
        }
        QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
        QCOMPARE(result.resources.size(), std::size_t(1));
        const auto& r = result.resources[0];
        QCOMPARE(QStringList({r.name, r.collection ? "1" : "0", r.etag,
                              r.currentUserPrincipal.value_or("")})
                     .join('|'),
                 read);
    }

    void accountStatusFollowsTheCredentials_data() {
        // The address ("dav", "broken": answers 500, or "none"), the user and the password
        // ("" sets none).
        QTest::addColumn<QStringList>("account");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("error");
        const int available = int(CloudAccountStatus::available);
        const int noAccount = int(CloudAccountStatus::noAccount);
        const int unknown = int(CloudAccountStatus::couldNotDetermine);
        QTest::newRow("right password") << QStringList{"dav", kUser, kPassword} << available << "";
        QTest::newRow("wrong password") << QStringList{"dav", kUser, "wrong"} << noAccount << "";
        QTest::newRow("unknown user")
            << QStringList{"dav", "mallory", kPassword} << noAccount << "";
        QTest::newRow("no password") << QStringList{"dav", "bob", ""} << noAccount << "";
        QTest::newRow("no address") << QStringList{"none", kUser, kPassword} << noAccount << "";
        QTest::newRow("server error")
            << QStringList{"broken", kUser, kPassword} << unknown << "The server answered 500";
    }
    void accountStatusFollowsTheCredentials() {
        QFETCH(QStringList, account);
        QFETCH(int, status);
        QFETCH(QString, error);
        Setting<std::string>("LINUX_CLOUD_serverAddress", "").set("");
        if (account[0] != "none") {
            setAccount(apache_->url("/" + account[0] + "/"), account[1],
                       account[2].isEmpty() ? nullptr : qPrintable(account[2]));
        } else {
            account_.setUserName(account[1]);
        }
        const auto [answer, failure] = accountStatus();
        QCOMPARE(int(answer), status);
        QCOMPARE(failure.has_value(), !error.isEmpty());
        if (failure) {
            QVERIFY2(QString::fromStdString(failure->message).startsWith(error),
                     failure->message.c_str());
        }
    }

    void aChangeBetweenReadAndWriteIsReadAgain_data() {
        QTest::addColumn<int>("changesElsewhere");
        QTest::addColumn<bool>("saved");
        QTest::newRow("once: read again and merged") << 1 << true;
        QTest::newRow("at every attempt: given up after two more") << 3 << false;
    }
    void aChangeBetweenReadAndWriteIsReadAgain() {
        QFETCH(int, changesElsewhere);
        QFETCH(bool, saved);
        setAccount(apache_->address(), kUser, kPassword);
        makeZones();
        const QString name = QStringLiteral("race%1").arg(changesElsewhere);
        QVERIFY(!modify({eventRecord(name.toStdString(), "first")}));
        // Apache gives a weak ETag for a file changed within the second; age it, so that the
        // conditional write is made.
        const QString file = recordFile("eventZone", name);
        auto age = [&](int seconds) {
            QFile f(file);
            QVERIFY(f.open(QIODevice::ReadWrite));
            QVERIFY(f.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                                  QFileDevice::FileModificationTime));
        };
        age(600);
        std::vector<int> attempts;
        service_->setBeforeConditionalWriteForTesting([&](const CloudRecordId&, int attempt) {
            attempts.push_back(attempt);
            if (int(attempts.size()) <= changesElsewhere) {
                // Another device changes the title meanwhile.
                QByteArray json = readAll(file);
                json.replace("\"first\"", "\"elsewhere\"");
                writeFile(file, json);
                age(500 - attempt);
            }
        });
        CloudRecord change{"eventInfo",
                           {"eventZone", name.toStdString()},
                           {{"eventStartDateYear", std::int64_t{1999}}}};
        const auto error = modify({change});
        service_->setBeforeConditionalWriteForTesting({});
        QCOMPARE(attempts, saved ? std::vector<int>({0, 1}) : std::vector<int>({0, 1, 2}));
        QCOMPARE(!error, saved);
        if (error) {
            QVERIFY2(error->message.find("kept changing") != std::string::npos,
                     error->message.c_str());
        }
        const auto held = fetch("eventZone", name.toStdString()).first;
        QVERIFY(held);
        QCOMPARE(std::get<std::string>(held->fields[0].second), std::string("elsewhere"));
        QCOMPARE(std::get<std::int64_t>(held->fields[1].second), saved ? 1999 : 2026);
    }

    void unreadableRecordsAndServerErrorsAreErrors_data() {
        QTest::addColumn<QByteArray>("content"); // of the file "bad.json"; "" for the 500 file
        QTest::addColumn<QString>("message");
        QTest::newRow("not JSON")
            << QByteArray("{\"recordType\": \"eventInfo\", ")
            << "The record \"bad\" in \"eventZone\" can't be read: cloud record: not valid JSON";
        QTest::newRow("wrong kind")
            << QByteArray(R"({"recordType":"eventInfo","recordName":"bad","fields":)"
                          R"({"eventType":{"type":"int64","value":"7"}}})")
            << "The record \"bad\" in \"eventZone\" can't be read: cloud record: field "
               "\"eventType\"";
        QTest::newRow("bytes not base64")
            << QByteArray(R"({"recordType":"eventInfo","recordName":"bad","fields":)"
                          R"({"eventDateWhenEveryWeek":{"type":"bytes","value":"%%"}}})")
            << "The record \"bad\" in \"eventZone\" can't be read: cloud record: field "
               "\"eventDateWhenEveryWeek\"";
        QTest::newRow("another record's name")
            << QByteArray(R"({"recordType":"eventInfo","recordName":"good","fields":{}})")
            << "The record \"bad\" in \"eventZone\" can't be read: it holds the record \"good\"";
        QTest::newRow("500 from the server") << QByteArray() << "The server answered 500";
    }
    void unreadableRecordsAndServerErrorsAreErrors() {
        QFETCH(QByteArray, content);
        QFETCH(QString, message);
        setAccount(apache_->address(), kUser, kPassword);
        makeZones();
        const std::string name = content.isEmpty() ? "server-error" : "bad";
        writeFile(recordFile("eventZone", QString::fromStdString(name)),
                  content.isEmpty() ? QByteArray("{}") : content);
        auto expectError = [&](const std::optional<CloudError>& error) {
            QVERIFY(error && !error->notFound);
            const QString text = QString::fromStdString(error->message);
            QVERIFY2(text.contains(message), qPrintable(text));
        };
        expectError(fetch("eventZone", name).second);
        expectError(std::get<2>(query("eventInfo", std::nullopt, 500)));
        CloudRecord change{"eventInfo", {"eventZone", name}, {{"eventType", std::int64_t{1}}}};
        expectError(modify({change}));
        QFile::remove(recordFile("eventZone", QString::fromStdString(name)));
    }

    void anUntrustedCertificateIsRefusedUntilPinned() {
        ApacheDav secure({{kUser, kPassword}}, true);
        QVERIFY(secure.start());
        const auto certificates = QSslCertificate::fromPath(secure.certificatePath());
        QCOMPARE(certificates.size(), 1);
        const QString print = QString::fromLatin1(
            certificates[0].digest(QCryptographicHash::Sha256).toHex(':').toUpper());
        setAccount(secure.address(), kUser, kPassword);

        using Check = std::tuple<WebDavCloudService::ConnectionCheck>;
        auto check = [&] {
            return std::get<0>(await<Check, WebDavCloudService::ConnectionCheck>(
                [&](auto done) { service_->testConnection(done); }));
        };
        struct Case {
            QString pinned;
            bool accepted;
        };
        for (const auto& c : {Case{"", false}, Case{print.toLower().remove(':'), true},
                              Case{QString(print).replace(0, 2, "00"), false}}) {
            account_.pinCertificate(c.pinned);
            const auto answer = check();
            QCOMPARE(answer.status, c.accepted ? CloudAccountStatus::available
                                               : CloudAccountStatus::couldNotDetermine);
            QCOMPARE(answer.untrustedCertificate, c.accepted ? QString() : print);
            if (!c.accepted) {
                QVERIFY(answer.error && QString::fromStdString(answer.error->message)
                                            .contains("SHA-256 fingerprint is " + print));
            }
        }
        account_.pinCertificate("");
    }

    void aSilentServerGivesAnErrorNotAHang() {
        // A server that takes the connection and never answers: the timeout ends the wait.
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        WebDavCloudService impatient(DefaultsSuite::standard(), std::chrono::milliseconds(700));
        setAccount(QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(silent.serverPort())), kUser,
                   kPassword);
        const auto [silentAnswer, silentFailure] =
            await<Status, CloudAccountStatus, std::optional<CloudError>>(
                [&](auto done) { impatient.accountStatus(done); });
        QCOMPARE(silentAnswer, CloudAccountStatus::couldNotDetermine);
        QVERIFY2(silentFailure && silentFailure->message.starts_with("The server didn't answer"),
                 silentFailure ? silentFailure->message.c_str() : "");
    }

    void aServiceDestroyedWhileBusyAnswersEveryCall() {
        setAccount(apache_->address(), kUser, kPassword);
        auto doomed = std::make_unique<WebDavCloudService>();
        std::vector<std::future<std::optional<CloudError>>> answers;
        std::vector<std::shared_ptr<std::promise<std::optional<CloudError>>>> promises;
        for (int i = 0; i < 20; ++i) {
            auto promise = std::make_shared<std::promise<std::optional<CloudError>>>();
            answers.push_back(promise->get_future());
            doomed->saveZone("eventZone",
                             [promise](std::optional<CloudError> e) { promise->set_value(e); });
            promises.push_back(promise);
        }
        doomed.reset();
        for (auto& answer : answers) {
            QCOMPARE(answer.wait_for(std::chrono::seconds(0)), std::future_status::ready);
        }
    }
};

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    WebDavTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_webdav.moc"
