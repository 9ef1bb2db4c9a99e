// The reminders settings page: the master switch and what it plans, the permission mirror that
// dims the switch, and the desktop's notification settings command.
#include "QtTestSupport.h"
#include "records/Defaults.h"
#include "settings/EmailHelper.h"
#include "settings/NotiSettingModel.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"

#include <QFile>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

int count(const CallLog& log, const std::string& prefix) {
    return static_cast<int>(std::count_if(log->begin(), log->end(), [&](const std::string& line) {
        return line.rfind(prefix, 0) == 0;
    }));
}

} // namespace

class NotiSettingsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<IsolatedStorage> storage_;
    Setting<bool> switchSetting{"ALL_APP_switchOfNotiOpenOrNotForAllEvent", true};
    Setting<bool> authorization{"ALL_APP_notiAuthorizationForAppStatus", false};

private slots:
    // The feedback mail: a composer where a mail client is registered, else the contact page
    // of the user's region.
    void feedbackGoesToMailOrTheRegionsContactPage_data() {
        QTest::addColumn<QString>("region");
        QTest::addColumn<bool>("canSendMail");
        QTest::addColumn<QString>("opened");
        const QString mail = "mailto:feedback@tidemark.org?subject=Feedback%26Bugs - Tide Mark";
        QTest::newRow("mail client, China") << "CN" << true << mail;
        QTest::newRow("no mail client, no region") << "" << false << "https://tidemark.org/contact";
        QTest::newRow("no mail client, Germany") << "DE" << false << "https://tidemark.org/contact";
        for (const char* region : {"CN", "TW", "HK", "MO"}) {
            QTest::addRow("no mail client, %s", region)
                << region << false << "https://tidemark.org/zh/contact";
        }
    }
    void feedbackGoesToMailOrTheRegionsContactPage() {
        QFETCH(QString, region);
        QFETCH(bool, canSendMail);
        QFETCH(QString, opened);
        EmailHelper helper;
        QUrl seen;
        helper.canSendMail = [&] { return canSendMail; };
        helper.region = [&] { return region; };
        helper.openUrl = [&](const QUrl& url) {
            seen = url;
            return true;
        };
        QVERIFY(helper.sendFeedbackMail("Feedback&Bugs - Tide Mark", "", "feedback@tidemark.org"));
        QCOMPARE(seen.toString(QUrl::FullyEncoded).replace("%20", " "), opened);
    }

    void initTestCase() {
        installTranslations(*QCoreApplication::instance(), "en_US");
        registerQmlTypes();
    }
    void init() { storage_ = std::make_unique<IsolatedStorage>(); }
    void cleanup() {
        host_.close();
        storage_.reset();
    }

    void settingsCommandPerDesktop_data() {
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QStringList>("command");
        const QStringList all{"systemsettings", "kcmshell6", "kcmshell5", "gnome-control-center",
                              "xfce4-notifyd-config"};
        QTest::newRow("plasma") << "KDE" << all
                                << QStringList{"systemsettings", "kcm_notifications"};
        QTest::newRow("plasma 5 without systemsettings")
            << "KDE" << QStringList{"kcmshell5"} << QStringList{"kcmshell5", "kcm_notifications"};
        QTest::newRow("phosh lists GNOME second")
            << "Phosh:GNOME" << all << QStringList{"gnome-control-center", "notifications"};
        QTest::newRow("ubuntu") << "ubuntu:GNOME" << all
                                << QStringList{"gnome-control-center", "notifications"};
        QTest::newRow("xfce") << "XFCE" << all << QStringList{"xfce4-notifyd-config"};
        QTest::newRow("desktop without its program")
            << "GNOME" << QStringList{"kcmshell5"} << QStringList{};
        QTest::newRow("unknown desktop") << "sway" << all << QStringList{};
        QTest::newRow("none") << "" << all << QStringList{};
    }
    void settingsCommandPerDesktop() {
        QFETCH(QString, desktop);
        QFETCH(QStringList, installed);
        QFETCH(QStringList, command);
        QCOMPARE(systemNotificationSettingsCommand(
                     desktop, [&](const QString& p) { return installed.contains(p); }),
                 command);
    }

    void switchingOffRemovesEverythingAndPlansNothing() {
        FakeServices services;
        NotiSettingModel model;
        model.setSwitchOn(false);
        QVERIFY(!switchSetting.get());
        QCOMPARE(*services.log, (std::vector<std::string>{"noti remove all"}));
    }

    void switchingOnDecidesOnThePermissionSeenBeforeAsking_data() {
        QTest::addColumn<bool>("mirrorBefore");
        QTest::addColumn<bool>("systemGrants");
        QTest::addColumn<bool>("switchAfter");
        QTest::addColumn<bool>("mirrorAfter");
        // The mirror is read before the system answers, so a grant arriving now still leaves
        // the switch off until the next try.
        QTest::newRow("allowed") << true << true << true << true;
        QTest::newRow("granted only now") << false << true << false << true;
        QTest::newRow("refused") << false << false << false << false;
        QTest::newRow("revoked since") << true << false << false << false; // the refusal wins
    }
    void switchingOnDecidesOnThePermissionSeenBeforeAsking() {
        QFETCH(bool, mirrorBefore);
        QFETCH(bool, systemGrants);
        QFETCH(bool, switchAfter);
        QFETCH(bool, mirrorAfter);
        FakeServices services(BackgroundRefreshStatus::available, systemGrants);
        switchSetting.set(false);
        authorization.set(mirrorBefore);
        NotiSettingModel model;
        model.setSwitchOn(true);
        QCOMPARE(model.switchOn(), switchAfter);
        QCOMPARE(model.authorized(), mirrorAfter);
        // Planning, when allowed before, replaces what is pending (the fake centre removes all
        // first).
        QCOMPARE(count(services.log, "noti remove all"), mirrorBefore ? 1 : 0);
    }

    void thePageDimsTheSwitchWithoutPermissionButKeepsItUsable() {
        FakeServices services(BackgroundRefreshStatus::available, false);
        QQuickItem* page = openPage();
        QVERIFY(page);
        QQuickItem* row = findChildItem(page, "masterSwitchRow");
        // On appearance the system was asked: refused, so both settings went off.
        QTRY_VERIFY(!switchSetting.get());
        QCOMPARE(row->opacity(), 0.28);
        auto* label = findChildItem(page, "masterSwitchLabel");
        QCOMPARE(label->property("text").toString(), QString("Reminders are off"));
        QVERIFY(findChildItem(page, "notAuthorizedNote")->isVisible());

        // Still usable: a tap tries, and the switch falls back off.
        auto* toggle = findChildItem(page, "masterSwitch");
        host_.tap(toggle);
        QTRY_VERIFY(!toggle->property("checked").toBool());
        QVERIFY(!switchSetting.get());

        // With permission the row is shown in full.
        authorization.set(true);
        switchSetting.set(true);
        QTRY_COMPARE(row->opacity(), 1.0);
        QTRY_COMPARE(label->property("text").toString(), QString("Reminders are on"));
        QVERIFY(toggle->property("checked").toBool());
    }

    // The button leaves the page at once; the desktop's page still opens, started on the
    // application's behalf after the page and its model are gone.
    void theDesktopPageOpensAfterThePageHasLeft() {
        FakeServices services;
        QTemporaryDir bin;
        const QString started = bin.filePath("started");
        QFile script(bin.filePath("xfce4-notifyd-config"));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write(QStringLiteral("#!/bin/sh\ntouch '%1'\n").arg(started).toUtf8());
        script.close();
        QVERIFY(script.setPermissions(script.permissions() | QFile::ExeOwner));
        const QByteArray path = qgetenv("PATH");
        const QByteArray desktop = qgetenv("XDG_CURRENT_DESKTOP");
        qputenv("PATH", bin.path().toLocal8Bit() + ":" + path);
        qputenv("XDG_CURRENT_DESKTOP", "XFCE");
        const auto restore = qScopeGuard([&] {
            qputenv("PATH", path);
            qputenv("XDG_CURRENT_DESKTOP", desktop);
        });

        QPointer<QQuickItem> page = openPage();
        QVERIFY(page);
        QPointer<NotiSettingModel> model = page->findChild<NotiSettingModel*>();
        QVERIFY(model);
        host_.tap(findChildItem(page, "openSystemSettingsButton"));
        QTRY_VERIFY(!page && !model);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(started), 10000);
    }

private:
    QQuickItem* openPage() {
        return host_.push(engine_, QStringLiteral("SettingViewSubViewForNotiSetting.qml"));
    }
    QQmlEngine engine_;
    PageHost host_;
};

QTEST_MAIN(NotiSettingsTest)
#include "test_noti_settings.moc"
