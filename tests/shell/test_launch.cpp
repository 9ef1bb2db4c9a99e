// The launch sequence, the first appearance of the calendar page, the notification answers and
// the background refresh handler, against recording services.
#include "QtTestSupport.h"
#include "base/Localize.h"
#include "notifications/notiFunc.h"
#include "records/Defaults.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"
#include "shell/AppDelegate.h"
#include "shell/CalendarPage.h"
#include "shell/DataStore.h"
#include "shell/FirstLaunch.h"
#include "shell/Translations.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

using namespace tidemark;
using namespace tidemark::testing;
using Log = std::vector<std::string>;

class LaunchTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<IsolatedStorage> storage_;
    std::unique_ptr<ScopedCalendarEnvironment> environment_;

private slots:
    void init() {
        storage_ = std::make_unique<IsolatedStorage>();
        environment_ = std::make_unique<ScopedCalendarEnvironment>(
            fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8));
        setTranslator({});
    }
    void cleanup() {
        environment_.reset();
        storage_.reset();
        setTranslator({});
    }

    void launchTouchesEveryServiceInOrder() {
        FakeServices services;
        Setting<bool>("ALL_APP_cloudkitFuncStatus", false).set(true);
        AppDelegate delegate;
        QVERIFY(delegate.didFinishLaunching());
        QCOMPARE(*services.log, (Log{"noti delegate set", "bg cancel all",
                                     "bg submit refreshNotiBgTaskEvery12Hours +10800",
                                     "cloud check", "widgets reload"}));
        // The publication of the launch is in the shared suite: an empty store gives "[]".
        auto value = DefaultsSuite::named(kSharedSuiteName)->value(kWidgetDataKey);
        QVERIFY(value.has_value());
        QCOMPARE(std::get<Bytes>(*value), (Bytes{'[', ']'}));
    }

    void launchWithEverythingOffOnlyPublishes() {
        FakeServices services(BackgroundRefreshStatus::denied);
        Setting<bool>("ALL_APP_switchOfNotiOpenOrNotForAllEvent", true).set(false);
        AppDelegate delegate;
        delegate.didFinishLaunching();
        QCOMPARE(*services.log, (Log{"widgets reload"}));
        QCOMPARE(services.center->delegate(), nullptr);
        // With no delegate, a tap reaches nobody and the settings stay as they were.
        QCOMPARE(delegate.userLaunchAppByPressLocalNotificationStatu.get(), false);
    }

    void appLockLastsOneLaunch_data() {
        QTest::addColumn<bool>("wishBefore");
        QTest::addColumn<bool>("lockBefore");
        QTest::addColumn<bool>("lockAfter");
        QTest::newRow("wish on") << true << false << true;
        QTest::newRow("wish off, lock was on") << false << true << false;
        QTest::newRow("both off") << false << false << false;
    }
    void appLockLastsOneLaunch() {
        QFETCH(bool, wishBefore);
        QFETCH(bool, lockBefore);
        QFETCH(bool, lockAfter);
        FakeServices services;
        Setting<bool>("APP_FUNC_appLockSettingFromUser", false).set(wishBefore);
        Setting<bool>("APP_FUNC_appLockStatu", false).set(lockBefore);
        AppDelegate().didFinishLaunching();
        QCOMPARE(Setting<bool>("APP_FUNC_appLockStatu", false).get(), lockAfter);
        QCOMPARE(Setting<bool>("APP_FUNC_appLockSettingFromUser", true).get(), false);
    }

    void tapRecordsTheIdentifierBeforeTheFlag() {
        FakeServices services;
        AppDelegate delegate;
        delegate.didFinishLaunching();
        QCOMPARE(services.center->delegate(), &delegate);
        std::string identifierWhenFlagged;
        auto token = delegate.userLaunchAppByPressLocalNotificationStatu.observe([&] {
            identifierWhenFlagged = delegate.userLaunchAppByPressLocalNotificationEventInfo.get();
        });
        services.center->delegate()->didReceiveResponse("EVENT@@UUID");
        QCOMPARE(identifierWhenFlagged, std::string("EVENT@@UUID"));
        QCOMPARE(delegate.userLaunchAppByPressLocalNotificationStatu.get(), true);
        QCOMPARE(delegate.willPresentNotification(),
                 (std::vector{AppDelegate::PresentationOption::sound,
                              AppDelegate::PresentationOption::banner}));
    }

    void firstAppearanceAddsTheSamplesOnce() {
        FakeServices services;
        DataStore dataStore;
        CalendarPage page(&dataStore);
        QSignalSpy done(&page, &CalendarPage::firstLaunchWorkDone);
        page.appeared();
        QCOMPARE(done.count(), 1);
        QCOMPARE(*services.log, (Log{"noti request authorization", "noti remove all",
                                     "widgets reload", "widgets reload", "widgets reload"}));
        QCOMPARE(Setting<bool>("userLaunchStatus", false).get(), true);
        QCOMPARE(Setting<bool>("ALL_APP_notiAuthorizationForAppStatus", false).get(), true);

        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), std::size_t(2));

        // Nothing falls on today, so the day list stays empty once the queued task has run.
        QTRY_VERIFY(dataStore.todayDataForUI().isEmpty());

        // Later appearances add nothing, even with every event gone.
        for (const auto& e : events) {
            realmDataFunc().deleteEventData(e.eventId);
        }
        services.log->clear();
        page.appeared();
        QCOMPARE(done.count(), 1);
        QCOMPARE(Store::open().count<eventInfo>(), std::int64_t(0));
        QCOMPARE(*services.log, Log{});
    }

    void samplesUseTheTranslatedTexts() {
        FakeServices services;
        installTranslations(*QCoreApplication::instance(), "zh_CN");
        runFirstLaunchWorkIfNeeded();
        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), std::size_t(2));
        QCOMPARE(QString::fromStdString(events[1].eventTitle), QStringLiteral("欢迎使用潮记"));
        QVERIFY(events[0].eventContent != "eventInfoAtOnboardPageContentString");
    }

    void sampleDatesAreNotCarried_data() {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("day");
        QTest::newRow("31 January") << 2026 << 1 << 31;
        QTest::newRow("31 December") << 2026 << 12 << 31;
        QTest::newRow("29 February") << 2028 << 2 << 29;
    }
    void sampleDatesAreNotCarried() {
        QFETCH(int, year);
        QFETCH(int, month);
        QFETCH(int, day);
        DateComponents today;
        today.year = year;
        today.month = month;
        today.day = day;
        const auto samples = makeSampleEvents(today);
        const auto start = [&](int i) {
            return QList<qint64>{samples[i].eventStartDateYear, samples[i].eventStartDateMonth,
                                 samples[i].eventStartDateDay};
        };
        QCOMPARE(start(0), (QList<qint64>{year + 1, 1, 1}));
        QCOMPARE(start(1), (QList<qint64>{year, month, day + 1}));
        QVERIFY(samples[0].eventId != samples[1].eventId);
    }

    void backgroundRefreshFilesTheNextRun() {
        FakeServices services;
        runBackgroundRefresh();
        QCOMPARE(*services.log, (Log{"noti remove all", "bg cancel all",
                                     "bg submit refreshNotiBgTaskEvery12Hours +10800"}));
    }
};

QTEST_GUILESS_MAIN(LaunchTest)
#include "test_launch.moc"
