// The main screen in its window (tabs, month header, grid, day list) and the toolkit's month and
// ring arithmetic. Any QML warning fails the test.
#include "QtTestSupport.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"
#include "shell/CalendarPage.h"
#include "shell/DataStore.h"
#include "shell/Tour.h"
#include "shell/Translations.h"
#include "shell/tideMarkApp.h"
#include "toolkit/DayRing.h"
#include "toolkit/MonthModel.h"

#include <QQmlContext>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>
#include <QTimeZone>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

bool shown(QQuickItem* item) {
    return item && item->isVisible();
}

} // namespace

class MainScreenTest : public QObject {
    Q_OBJECT

private:
    ShellFixture fixture_;
    LaunchedApp app_;

    QQuickWindow* window() const { return app_.window(); }
    QQuickItem* item(const QString& name) const { return app_.item(name); }
    CalendarPage* calendarPage() const { return app_.app->calendarPage(); }
    MonthModel* monthModel() const {
        auto* calendar = item("calendar");
        return calendar ? calendar->property("model").value<MonthModel*>() : nullptr;
    }
    QQuickItem* dayCell(int day) const {
        // March 2026 starts on a Sunday, the first weekday of en_US: cell i is day i + 1.
        return item(QStringLiteral("day_%1").arg(day - 1));
    }

    bool open() { return app_.launch(); }
    void close() { app_.close(); }
    void click(QQuickItem* target) { tap(window(), target); }
    QString currentTab() const {
        return QString::fromStdString(std::string(rawValue(
            Setting<tabValue>("APP_FUNC_newTabBarTabValue", tabValue::summaryView).get())));
    }

private slots:
    void initTestCase() {
        trapWarnings();
        QQuickStyle::setStyle(QStringLiteral("Material"));
        installTranslations(*qApp, "en_US");
    }
    void init() {
        fixture_.init();
        Setting<bool>("userLaunchStatus", false).set(true);
        app_.app = std::make_unique<tideMarkApp>();
    }
    void cleanup() {
        app_.close();
        app_.app.reset();
        fixture_.cleanup();
    }

    void tabsSwitchPersistAndPlusLeavesTheTab() {
        QVERIFY(open());
        QVERIFY(shown(item("calendarPageView")));
        QVERIFY(!item("eventListPage")); // built when first shown
        const auto colourOf = [&](const QString& tab) {
            return findChildItem(item("tab_" + tab), "tabIcon")->property("color").value<QColor>();
        };
        QTRY_COMPARE(colourOf("summaryView"), QColor("#1F7A8C"));
        QCOMPARE(colourOf("eventListView"), QColor("#9AA5AD"));
        QCOMPARE(colourOf("addNewEvent"), QColor("#E5534B"));
        const int hapticsBefore = app_.app->haptics()->requestCount();

        click(item("tab_eventListView"));
        QCOMPARE(currentTab(), QString("eventListView"));
        QTRY_VERIFY(shown(item("eventListPage")));
        QVERIFY(!shown(item("calendarPageView")));

        click(item("tab_addNewEvent"));
        QCOMPARE(currentTab(), QString("eventListView"));
        QVERIFY(app_.reaches("addNewEventPage"));
        click(item("formBackButton"));
        QVERIFY(app_.reaches("mainView"));

        click(item("tab_moreView"));
        QCOMPARE(currentTab(), QString("moreView"));
        QVERIFY(shown(item("settingView")));
        QCOMPARE(app_.app->haptics()->requestCount(), hapticsBefore + 3);

        // A restart opens the saved tab, and the calendar page waits until it is shown.
        close();
        QVERIFY(open());
        QVERIFY(shown(item("settingView")));
        QVERIFY(!item("calendarPageView"));
        click(item("tab_summaryView"));
        QCOMPARE(currentTab(), QString("summaryView"));
        QVERIFY(shown(item("calendarPageView")));
    }

    // Desktop keys: Ctrl+N opens the form (not a second one), Escape leaves the top page; the
    // appearance chosen on the main screen's page holds for the pages above it.
    void keysAndTheChosenThemeReachEveryPage() {
        QVERIFY(open());
        auto* stack = item("appStack");
        const auto depthSettles = [&](int depth) {
            return QTest::qWaitFor([&] {
                return stack->property("depth").toInt() == depth &&
                       !stack->property("busy").toBool();
            });
        };
        QTest::keyClick(window(), Qt::Key_N, Qt::ControlModifier);
        QVERIFY(depthSettles(2));
        QTest::keyClick(window(), Qt::Key_N, Qt::ControlModifier);
        QTest::qWait(300);
        QVERIFY(depthSettles(2));
        QTest::keyClick(window(), Qt::Key_Escape);
        QVERIFY(depthSettles(1));

        for (const auto& [choice, dark] :
             {std::pair{"displayModeChoice1", true}, std::pair{"displayModeChoice0", false}}) {
            click(item("displayModeButton"));
            QVERIFY(depthSettles(2));
            click(qobject_cast<QQuickItem*>(findShownObject(window(), choice)));
            QTRY_COMPARE(app_.topPage()->property("dark").toBool(), dark);
            QCOMPARE(app_.app->preferredColorScheme(), QString(dark ? "dark" : "light"));
            QTest::keyClick(window(), Qt::Key_Escape);
            QVERIFY(depthSettles(1));
        }
    }

    void headlineFollowsThePageSetting() {
        QCOMPARE(app_.app->headline(0), QStringLiteral("Tuesday, March 10"));
        QCOMPARE(app_.app->headline(1), QStringLiteral("Next few days"));
        QCOMPARE(app_.app->headline(2), QString());
        Setting<std::int64_t>("FUNC_APP_tabViewSelection", 0).set(1);
        QVERIFY(open());
        QCOMPARE(item("headline")->property("text").toString(), QStringLiteral("Next few days"));
    }

    void monthArrowsMoveTheMonthNotTheSelection() {
        QVERIFY(open());
        auto* label = item("monthLabel");
        QCOMPARE(label->property("text").toString(), QString("March 2026"));
        click(dayCell(15));
        QTRY_VERIFY(calendarPage()->todayDateForDatePickerDefault().isValid());
        const QDateTime selected = calendarPage()->todayDateForDatePickerDefault();
        const int hapticsBefore = app_.app->haptics()->requestCount();

        click(item("nextMonthButton"));
        QCOMPARE(label->property("text").toString(), QString("April 2026"));
        click(item("previousMonthButton"));
        click(item("previousMonthButton"));
        QCOMPARE(label->property("text").toString(), QString("February 2026"));
        QCOMPARE(calendarPage()->todayDateForDatePickerDefault(), selected);
        QCOMPARE(app_.app->haptics()->requestCount(), hapticsBefore + 3);
    }

    void selectingADayFillsTheDayList() {
        realmDataFunc().addEventData(
            dayEvent("A", "Dentist", 2026, 3, 15, "colorForUserSelection01"));
        QVERIFY(open());
        auto* noEvent = item("noEventLabel");
        QTRY_VERIFY(shown(noEvent)); // today, the 10th, is empty
        QCOMPARE(noEvent->property("text").toString(), QString("No events on this day"));

        click(dayCell(15));
        QTRY_COMPARE(app_.app->dataStore()->todayDataForUI(), QStringList{"A"});
        auto* list = item("dayList");
        QTRY_COMPARE(list->property("count").toInt(), 1);
        QVERIFY(!noEvent->isVisible());

        click(dayCell(16));
        QTRY_COMPARE(list->property("count").toInt(), 0);
        QVERIFY(noEvent->isVisible());
    }

    void ringsFollowTheSortedColoursOfTheDay() {
        realmDataFunc data;
        data.addEventData(dayEvent("one", "One", 2026, 3, 12, "colorForUserSelection03"));
        data.addEventData(dayEvent("b", "B", 2026, 3, 20, "colorForUserSelection02"));
        data.addEventData(dayEvent("c", "C", 2026, 3, 20, ""));
        data.addEventData(dayEvent("a", "A", 2026, 3, 20, "colorForUserSelection01"));
        QVERIFY(open());

        struct Case {
            int day;
            QStringList names;
        };
        const QList<Case> cases = {
            {13, {}},
            {12, {"colorForUserSelection03"}},
            {20, {"colorForUserSelection01", "colorForUserSelection02", "default"}},
        };
        for (const auto& c : cases) {
            QCOMPARE(monthModel()
                         ->data(monthModel()->index(c.day - 1), MonthModel::ColorNamesRole)
                         .toStringList(),
                     c.names);
            auto* ring = findChildItem(dayCell(c.day), "ring");
            QVERIFY2(ring, qPrintable(QString::number(c.day)));
            QCOMPARE(ring->property("arcCount").toInt(), c.names.size());
            QCOMPARE(ring->opacity(), 0.723);
        }
        const auto colours = findChildItem(dayCell(20), "ring")->property("colors").toList();
        QCOMPARE(colours.size(), 3);
        QCOMPARE(colours[0].value<QColor>(), QColor("#E5534B"));
        QCOMPARE(colours[2].value<QColor>(), QColor("#8E8E93")); // the gray of "default"

        // A write to the store reaches the grid without anything else happening.
        data.addEventData(dayEvent("late", "Late", 2026, 3, 13, "colorForUserSelection05"));
        QTRY_COMPARE(findChildItem(dayCell(13), "ring")->property("arcCount").toInt(), 1);
    }

    void selectedPastAndTodayForms() {
        realmDataFunc().addEventData(dayEvent("p", "Past", 2026, 3, 5, "colorForUserSelection01"));
        QVERIFY(open());
        // Today is selected at first: the filled circle, no ring, the selected text colour.
        auto* today = dayCell(10);
        QVERIFY(today->property("selected").toBool());
        QVERIFY(findChildItem(today, "selectedCircle")->isVisible());
        QVERIFY(!findChildItem(today, "ring")->isVisible());
        QCOMPARE(findChildItem(today, "dayText")->property("color").value<QColor>(),
                 QColor("#FFFFFF"));
        QCOMPARE(findChildItem(today, "dayText")->property("text").toString(), QString("10"));

        auto* past = dayCell(5);
        QCOMPARE(past->opacity(), 0.28);
        QVERIFY(findChildItem(past, "ring")->isVisible());
        QCOMPARE(findChildItem(past, "ring")->property("arcCount").toInt(), 1);
        QCOMPARE(findChildItem(past, "dayText")->property("text").toString(), QString("05"));
        QCOMPARE(dayCell(11)->opacity(), 1.0);

        // Selected, the past day with an event loses its ring and its fading.
        click(past);
        QTRY_VERIFY(past->property("selected").toBool());
        QVERIFY(!findChildItem(past, "ring")->isVisible());
        QCOMPARE(past->opacity(), 1.0);
        QVERIFY(!findChildItem(today, "selectedCircle")->isVisible());
    }

    void gridStartsAtTheFirstWeekday_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("firstWeekday");
        QTest::addColumn<QStringList>("shown"); // first cell, title, first weekday's symbol
        // 1 March 2026 is a Sunday.
        QTest::newRow("en_US Sunday")
            << "en_US" << 1 << QStringList{"2026-03-01", "March 2026", "Su"};
        QTest::newRow("Monday") << "en_US" << 2 << QStringList{"2026-02-23", "March 2026", "Mo"};
        QTest::newRow("Saturday") << "en_US" << 7 << QStringList{"2026-02-28", "March 2026", "Sa"};
        QTest::newRow("zh_CN") << "zh_CN" << 2 << QStringList{"2026-02-23", "2026年3月", "一"};
    }
    void gridStartsAtTheFirstWeekday() {
        QFETCH(QString, locale);
        QFETCH(int, firstWeekday);
        QFETCH(QStringList, shown);
        auto env = fixedEnvironment("Europe/Berlin", locale.toStdString(), 2026, 3, 10, 8);
        env.firstWeekday = firstWeekday;
        ScopedCalendarEnvironment scoped(env);
        MonthModel model;
        QCOMPARE(model.rowCount(), 42);
        const QDateTime first = model.data(model.index(0), MonthModel::DateRole).toDateTime();
        QCOMPARE(first.toTimeZone(QTimeZone("Europe/Berlin")).date().toString(Qt::ISODate),
                 shown[0]);
        QCOMPARE(model.monthTitle(), shown[1]);
        QCOMPARE(model.weekdaySymbols().size(), 7);
        QVERIFY2(model.weekdaySymbols().first().contains(shown[2]),
                 qPrintable(model.weekdaySymbols().join(",")));
        int inMonth = 0;
        for (int i = 0; i < 42; ++i) {
            inMonth += model.data(model.index(i), MonthModel::IsCurrentMonthRole).toBool();
        }
        QCOMPARE(inMonth, 31);
    }

    void monthChangesRecomputeFromTheStore() {
        realmDataFunc().addEventData(
            dayEvent("y", "Yearly", 2025, 4, 2, "colorForUserSelection04"));
        MonthModel model;
        const int builds = model.buildCount();
        model.moveMonth(1); // April 2026: 1 April is a Wednesday, cell 3
        QCOMPARE(model.buildCount(), builds + 1);
        QCOMPARE(model.data(model.index(3), MonthModel::DayTextRole).toString(), QString("01"));
        // The one-off event of 2 April 2025 lies in another year: nothing on 2 April 2026.
        QCOMPARE(model.data(model.index(4), MonthModel::ColorNamesRole).toStringList(),
                 QStringList{});
        QCOMPARE(model.data(model.index(3), MonthModel::IsPastRole).toBool(), false);
        model.moveMonth(-13); // March 2025
        QCOMPARE(model.monthTitle(), QString("March 2025"));
        QCOMPARE(model.data(model.index(0), MonthModel::IsPastRole).toBool(), true);
        model.moveMonth(1); // April 2025: 1 April is a Tuesday, so 2 April is cell 3
        QCOMPARE(model.data(model.index(3), MonthModel::ColorNamesRole).toStringList(),
                 QStringList{"colorForUserSelection04"});
    }

    void colourNamesSortAsPlainStrings() {
        QCOMPARE(sortedColorNames({"-", "colorForUserSelection10", "colorForUserSelection09", "-"}),
                 (QStringList{"colorForUserSelection09", "colorForUserSelection10", "default",
                              "default"}));
        QCOMPARE(sortedColorNames({}), QStringList{});
    }
};

QTEST_MAIN(MainScreenTest)
#include "test_main_screen.moc"
