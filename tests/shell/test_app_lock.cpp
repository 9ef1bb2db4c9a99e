// The app lock against real PAM: pam_wrapper with a service folder of the test's own, whose
// "tidemark" service checks a pam_matrix password file. The program starts itself again with
// pam_wrapper preloaded, since the wrapper must be in place before the process starts.
#include "QtTestSupport.h"
#include "platform/linux/PamAuthenticator.h"
#include "records/DeviceOwnerAuthenticator.h"
#include "records/realmDataFunc.h"
#include "settings/AppLockModel.h"
#include "shell/AppDelegate.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <unistd.h>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

constexpr const char* kPassword = "tide-4-mark";

std::filesystem::path pamDir() {
    return qEnvironmentVariable("PAM_WRAPPER_SERVICE_DIR").toStdString();
}

void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file) << text;
}

} // namespace

class AppLockTest : public QObject {
    Q_OBJECT

    std::unique_ptr<IsolatedStorage> storage_;
    extensionDataFunc lock_;

private slots:
    void initTestCase() {
        installTranslations(*QCoreApplication::instance(), "en_US");
        registerQmlTypes();
        trapWarnings();
    }
    void init() {
        storage_ = std::make_unique<IsolatedStorage>();
        setDeviceOwnerAuthenticator(std::make_shared<PamAuthenticator>(
            "tidemark", std::vector<std::filesystem::path>{pamDir()}));
    }
    void cleanup() {
        setDeviceOwnerAuthenticator(nullptr);
        storage_.reset();
        QVERIFY2(takeWarnings().isEmpty(), qPrintable(takeWarnings().join('\n')));
    }

    void launchLocksAndOnlyTheRightPasswordTypedOnThePageUnlocks() {
        FakeServices services;
        lock_.appLockSettingFromUser.set(true);
        AppDelegate().didFinishLaunching();
        QVERIFY(lock_.appLockStatu.get());
        QVERIFY(!lock_.appLockSettingFromUser.get());

        // The window goes before the engine: its bindings must not outlive the theme.
        QQmlEngine engine;
        PageHost host;
        QQuickItem* root = host.show(engine, R"(Item {
            objectName: "page"
            anchors.fill: parent
            property int underneathTaps: 0
            Button { objectName: "underneath"; anchors.fill: parent; onClicked: parent.underneathTaps++ }
            UnlockAppView { anchors.fill: parent }
        })");
        QVERIFY(root);
        QQuickWindow* view = host.window();
        auto* page = root->findChild<QQuickItem*>("unlockAppView");
        auto* field = root->findChild<QQuickItem*>("unlockAnswerField");
        auto* hint = root->findChild<QQuickItem*>("unlockHint");
        QVERIFY(page && field && hint);

        // The page asked on appearing: PAM's question is on it, with a field for the secret.
        QVERIFY(page->isVisible());
        QTRY_VERIFY(field->isVisible());
        QCOMPARE(root->findChild<QQuickItem*>("unlockPrompt")->property("text").toString(),
                 QString("Password:"));
        QTRY_VERIFY(field->hasActiveFocus());

        // Nothing underneath takes a tap while locked.
        const QPoint corner(20, 820);
        QTest::mouseClick(view, Qt::LeftButton, {}, corner);
        QCOMPARE(root->property("underneathTaps").toInt(), 0);

        typeText(view, "wrong");
        QTest::keyClick(view, Qt::Key_Return);
        QTRY_VERIFY(!field->isVisible());
        QTRY_VERIFY(hint->isVisible());
        QCOMPARE(hint->property("text").toString(), QString("Tap anywhere to try again"));
        QVERIFY(lock_.appLockStatu.get());

        // A tap anywhere tries again; the right password lifts the lock and the page goes.
        QTest::mouseClick(view, Qt::LeftButton, {}, corner);
        QTRY_VERIFY(field->isVisible());
        QCOMPARE(root->property("underneathTaps").toInt(), 0);
        QTRY_VERIFY(field->hasActiveFocus());
        typeText(view, kPassword);
        QTest::keyClick(view, Qt::Key_Return);
        QTRY_VERIFY(!lock_.appLockStatu.get());
        QTRY_VERIFY(!page->isVisible());
        QTest::mouseClick(view, Qt::LeftButton, {}, corner);
        QCOMPARE(root->property("underneathTaps").toInt(), 1);
    }

    void cancellingLeavesItLockedAndTheNextAttemptStartsAfresh() {
        lock_.appLockStatu.set(true);
        AppLockModel model;
        QVERIFY(model.available());
        model.unlock();
        QTRY_COMPARE(model.prompt(), QString("Password:"));
        QVERIFY(model.secret());
        model.cancel();
        QTRY_VERIFY(!model.busy());
        QVERIFY(model.prompt().isEmpty());
        QVERIFY(model.locked());

        model.unlock();
        QTRY_VERIFY(!model.prompt().isEmpty());
        model.answer(kPassword);
        QTRY_VERIFY(!model.locked());
        QTRY_VERIFY(!model.busy());
    }

    void withoutAWayToAuthenticateNothingChanges_data() {
        QTest::addColumn<bool>("pamWithoutService");
        QTest::newRow("no authenticator installed") << false;
        QTest::newRow("no PAM service for the app") << true;
    }
    void withoutAWayToAuthenticateNothingChanges() {
        QFETCH(bool, pamWithoutService);
        TempDir empty;
        setDeviceOwnerAuthenticator(
            pamWithoutService ? std::make_shared<PamAuthenticator>(
                                    "tidemark", std::vector<std::filesystem::path>{empty.path()})
                              : nullptr);
        lock_.appLockStatu.set(true);
        AppLockModel model;
        QVERIFY(!model.available());
        model.unlock();
        QTest::qWait(100);
        QVERIFY(!model.busy());
        QVERIFY(model.locked());
    }

    void whichServiceFilesLetPamAnswer_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("answers");
        QTest::addColumn<QString>("text");
        QTest::newRow("own service") << "tidemark" << true << "auth include common-auth\n";
        QTest::newRow("other of Debian") << "other" << true << "@include common-auth\n";
        QTest::newRow("other that denies")
            << "other" << false << "auth required pam_deny.so\naccount required pam_deny.so\n";
        QTest::newRow("other that denies, bracketed")
            << "other" << false << "-auth [success=ok default=die] pam_deny.so\n";
        QTest::newRow("other that warns, then denies")
            << "other" << true << "auth required pam_warn.so\nauth required pam_deny.so\n";
        QTest::newRow("another app's service") << "login" << false << "auth include common-auth\n";
    }
    void whichServiceFilesLetPamAnswer() {
        QFETCH(QString, file);
        QFETCH(bool, answers);
        QFETCH(QString, text);
        TempDir dir;
        write(dir.path() / file.toStdString(), text.toStdString());
        QCOMPARE(pamServiceConfigured("tidemark", {dir.path() / "missing", dir.path()}), answers);
    }
};

int main(int argc, char* argv[]) {
    if (qEnvironmentVariable("PAM_WRAPPER") != "1") {
        // A PAM of the test's own: the service asks pam_matrix, which knows this account with
        // one password; then start again with it.
        std::string dir = (std::filesystem::temp_directory_path() / "tidemark-pam-XXXXXX").string();
        if (!mkdtemp(dir.data())) {
            return 1;
        }
        const passwd* account = getpwuid(getuid());
        if (!account) {
            return 1;
        }
        const std::string passdb = dir + "/passdb";
        write(passdb, std::string(account->pw_name) + ":" + kPassword + ":tidemark\n");
        const std::string module = std::string(TIDEMARK_PAM_MATRIX_MODULE) + " passdb=" + passdb;
        write(dir + "/tidemark", "auth required " + module + "\naccount required " + module + "\n");
        setenv("LD_PRELOAD", TIDEMARK_PAM_WRAPPER_LIBRARY, 1);
        setenv("PAM_WRAPPER", "1", 1);
        setenv("PAM_WRAPPER_SERVICE_DIR", dir.c_str(), 1);
        execv("/proc/self/exe", argv);
        return 1;
    }
    QGuiApplication app(argc, argv);
    AppLockTest test;
    const int failures = QTest::qExec(&test, argc, argv);
    std::error_code ignored;
    std::filesystem::remove_all(pamDir(), ignored);
    return failures;
}

#include "test_app_lock.moc"
