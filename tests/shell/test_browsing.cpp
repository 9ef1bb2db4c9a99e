// The browsing screens over a real store at 10:00 on Tuesday 10 March 2026 in Berlin, driven in a
// window and rendered in light and dark, English and Chinese. Any QML warning fails the test.
// Set TIDEMARK_BROWSING_RENDER_DIR to keep the rendered pages as PNG files.
#include "QtTestSupport.h"
#include "browsing/EventSchedule.h"
#include "browsing/FilteredEventListModel.h"
#include "browsing/ShareEventImage.h"
#include "browsing/StackCardLayout.h"
#include "browsing/Summary.h"
#include "engine/Occurrences.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"

#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

void removeEvent(const std::string& id) {
    auto s = Store::open();
    s.write([&] { s.remove<eventInfo>(id); });
}

} // namespace

class BrowsingTest : public QObject {
    Q_OBJECT

    ShellFixture fixture_;
    std::unique_ptr<ScopedCalendarEnvironment> environment_;
    std::unique_ptr<QQmlEngine> engine_;
    PageHost host_;

    /// Shows `item` (QML text of one object, named "page") in a 390 x 844 window.
    QQuickItem* show(const QString& item, bool dark = false) {
        return host_.show(*engine_, item, dark);
    }
    void click(QQuickItem* item) { host_.tap(item); }

private slots:
    void initTestCase() {
        trapWarnings();
        environment_ = std::make_unique<ScopedCalendarEnvironment>(
            fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 10, 0));
        installTranslations(*QCoreApplication::instance(), "en_US");
        registerQmlTypes();
        engine_ = std::make_unique<QQmlEngine>();
    }
    void init() { fixture_.init(false); }
    void cleanup() {
        host_.close();
        fixture_.cleanup();
    }

    void listModelFollowsStoreWrites() {
        FilteredEventListModel model;
        QCOMPARE(model.count(), 0);
        QVERIFY(model.showEmptyBox());
        QCOMPARE(model.kindMenuTitle(), QString("All events"));

        storeEvents({makeEvent("old", "20260101000000"), makeEvent("new", "20260201000000")});
        QTRY_COMPARE(model.eventIds(), (QStringList{"new", "old"}));
        QVERIFY(!model.showEmptyBox());
        QCOMPARE(model.data(model.index(0), FilteredEventListModel::EventIdRole).toString(),
                 QString("new"));

        // An edit that keeps the list as it is leaves the rows (and the scroll position) alone.
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy rowsChanged(&model, &FilteredEventListModel::rowsChanged);
        storeEvents(
            {makeEvent("new", "20260201000000", [](eventInfo& e) { e.eventTitle = "Edited"; })});
        QTRY_COMPARE(rowsChanged.count(), 1);
        QCOMPARE(resets.count(), 0);

        removeEvent("new");
        QTRY_COMPARE(model.eventIds(), QStringList{"old"});
        QCOMPARE(resets.count(), 1);
        removeEvent("old");
        QTRY_VERIFY(model.showEmptyBox());
    }

    void rowShowsTheEventAndEmitsItsRequests() {
        storeEvents({makeEvent("full", "1",
                               [](eventInfo& e) {
                                   e.eventTitle = "Climbing";
                                   e.eventType = 2;
                                   e.eventRepeatOrNot = true;
                                   e.eventDateWhenEveryWeek = encodeDayListArchive({4, 1});
                                   e.eventStarOrNot = e.eventNotiOrNot = e.eventShareOrNot = true;
                                   e.eventHaveMemoOrNot = true;
                                   e.eventColorString = "colorForUserSelection05";
                               }),
                     makeEvent("bare", "2")});
        auto* page = show(R"(ListRowViewForTimeline { objectName: "page"; x: 16; y: 16;
                                width: 358; eventId: "full" })");
        QVERIFY(page);
        QCOMPARE(findChildItem(page, "title")->property("text").toString(), QString("Climbing"));
        QVERIFY(findChildItem(page, "colorMark")->isVisible());
        QCOMPARE(findChildItem(page, "symbols")->property("count").toInt(), 4);
        QVERIFY(!findChildItem(page, "content")->isVisible());
        QVERIFY(!findChildItem(page, "dayCount")->isVisible());
        QCOMPARE(findChildItem(page, "dates")->property("text").toString(),
                 QString("2026-03-10 ~ ∞"));

        for (const auto& [button, signal] :
             {std::pair{"memoButton", SIGNAL(memoRequested(QString))},
              {"editButton", SIGNAL(editRequested(QString))},
              {"shareButton", SIGNAL(shareRequested(QString))},
              {"title", SIGNAL(cardRequested(QString))}}) {
            QSignalSpy requested(page, signal);
            click(findChildItem(page, button));
            QCOMPARE(requested.count(), 1);
            QCOMPARE(requested.at(0).at(0).toString(), QString("full"));
        }

        QVERIFY(!page->property("showMoreDetailToggle").toBool());
        click(findChildItem(page, "detailsToggle"));
        QVERIFY(page->property("showMoreDetailToggle").toBool());
        QTRY_VERIFY(findChildItem(page, "details")->height() > 10);
        QCOMPARE(findChildItem(page, "detailsText")->property("text").toString(),
                 QString("Every week: Mon Thu"));

        page->setProperty("eventId", "bare");
        QVERIFY(!findChildItem(page, "memoButton")->isVisible());
        QVERIFY(!findChildItem(page, "colorMark")->isVisible());
        QVERIFY(!findChildItem(page, "detailsToggle")->isVisible());
        QCOMPARE(findChildItem(page, "dayCountUnit")->property("text").toString(),
                 QString("Today"));

        // An edit elsewhere reaches the shown row; a deletion hides it.
        storeEvents({makeEvent("bare", "2", [](eventInfo& e) { e.eventTitle = "Renamed"; })});
        QTRY_COMPARE(findChildItem(page, "title")->property("text").toString(), QString("Renamed"));
        removeEvent("bare");
        QTRY_VERIFY(!page->isVisible());
        QCOMPARE(page->implicitHeight(), 0.0);
    }

    void timelineClearsRemindersAndShowsTheBox() {
        auto* page = show(R"(TimelineView { objectName: "page"; anchors.fill: parent })");
        QVERIFY(page);
        QCOMPARE(std::count(fixture_.log()->begin(), fixture_.log()->end(), "noti remove all"), 1L);
        QCOMPARE(findChildItem(page, "kindMenuTitle")->property("text").toString(),
                 QString("All events"));
        QTRY_VERIFY(findChildItem(page, "emptyBox") &&
                    findChildItem(page, "emptyBox")->isVisible());

        QVERIFY(findChildItem(page, "nextFewDaysLink")->isVisible());

        storeEvents({makeEvent("a", "1")});
        QTRY_VERIFY(!findChildItem(page, "emptyBox")->isVisible());
        QTRY_COMPARE(page->property("rows").value<QObject*>()->property("count").toInt(), 1);

        page->setVisible(false);
        page->setVisible(true);
        QCOMPARE(std::count(fixture_.log()->begin(), fixture_.log()->end(), "noti remove all"), 2L);

        Setting<std::int64_t> kind{"TL_UIOptions_showWhichKindEventSelection", 9};
        auto* menu = page->findChild<QObject*>("kindMenu");
        QVERIFY(menu);
        for (int value : {0, 3}) {
            click(findChildItem(page, "kindMenuButton"));
            QTRY_VERIFY(menu->property("opened").toBool());
            auto* item = findChildItem(menu->property("contentItem").value<QObject*>(),
                                       QStringLiteral("kindMenuItem%1").arg(value));
            QVERIFY(item);
            click(item);
            QCOMPARE(kind.get(), std::int64_t(value));
            QTRY_VERIFY(item->property("checked").toBool());
        }
        QTRY_COMPARE(findChildItem(page, "kindMenuTitle")->property("text").toString(),
                     QString("Starred"));

        auto* popup = page->findChild<QObject*>("filterSettingPopupForMainView");
        QVERIFY(popup && !popup->property("visible").toBool());
        click(findChildItem(page, "filterButton"));
        QTRY_VERIFY(popup->property("opened").toBool());
    }

    void listPageResetsTheKindOnAppearance() {
        Setting<std::int64_t> kind{"TL_UIOptions_showWhichKindEventSelection", 9};
        kind = 3;
        storeEvents({makeEvent("a", "1"), makeEvent("b", "2")});
        auto* page = show(R"(EventListPage { objectName: "page"; anchors.fill: parent })");
        QVERIFY(page);
        QCOMPARE(kind.get(), std::int64_t(9));
        auto* rows = page->property("rows").value<QObject*>();
        QTRY_COMPARE(rows->property("count").toInt(), 2);

        kind = 3;
        QTRY_COMPARE(rows->property("count").toInt(), 0);
        page->setVisible(false);
        page->setVisible(true);
        QCOMPARE(kind.get(), std::int64_t(9));
        QTRY_COMPARE(rows->property("count").toInt(), 2);
    }

    void filterPageWritesTheSettings() {
        storeEvents({makeEvent("plain", "1"), endedEvent("ended", "0", 1, 1),
                     makeEvent("red", "2", [](eventInfo& e) {
                         e.eventColorString = "colorForUserSelection01";
                         e.eventStarOrNot = true;
                     })});
        FilteredEventListModel model;
        Setting<std::int64_t> kind{"TL_UIOptions_showWhichKindEventSelection", 9};
        Setting<std::string> colour{"ALL_APP_filterSelectionFromUserForColorString", "-"};
        Setting<bool> showEnded{"TL_UIOptions_timelineViewShowEndEventOrNot", true};
        Setting<bool> light{"colorSchemeSetToAlwaysLight", false};
        Setting<bool> dark{"colorSchemeSetToAlwaysDark", false};
        Setting<bool> system{"colorSchemeSetToFollowSystem", false};
        Setting<Theme> theme{"APP_UI_systemColorTheme", Theme::systemDefault};

        auto* page = show(R"(ChangeFilterContentPageForTimelineView { objectName: "page";
                                anchors.fill: parent })");
        QVERIFY(page);
        QCOMPARE(findChildItem(page, "navigationTitle")->property("text").toString(),
                 QString("Filter"));
        QVERIFY(findChildItem(findChildItem(page, "kindRow9"), "checkmark")->isVisible());

        click(findChildItem(page, "kindRow3"));
        QCOMPARE(kind.get(), std::int64_t(3));
        QTRY_COMPARE(model.eventIds(), QStringList{"red"});
        QTRY_VERIFY(findChildItem(findChildItem(page, "kindRow3"), "checkmark")->isVisible());
        QVERIFY(!findChildItem(findChildItem(page, "kindRow9"), "checkmark")->isVisible());
        click(findChildItem(page, "kindRow9"));
        QCOMPARE(kind.get(), std::int64_t(9));

        click(findChildItem(page, "colourCellNone"));
        QCOMPARE(colour.get(), std::string());
        QTRY_COMPARE(model.eventIds(), (QStringList{"plain", "ended"}));
        click(findChildItem(page, "showEndedFalse"));
        QCOMPARE(showEnded.get(), false);
        QTRY_COMPARE(model.eventIds(), QStringList{"plain"});
        click(findChildItem(page, "showEndedTrue"));
        QCOMPARE(showEnded.get(), true);
        click(findChildItem(page, "colourCell0"));
        QCOMPARE(colour.get(), std::string("colorForUserSelection01"));
        QTRY_COMPARE(model.eventIds(), QStringList{"red"});
        click(findChildItem(page, "colourCell0"));
        QCOMPARE(colour.get(), std::string("-"));
        QTRY_COMPARE(model.eventIds(), (QStringList{"red", "plain", "ended"}));

        click(findChildItem(page, "schemeCell1"));
        QVERIFY(dark.get() && !light.get() && !system.get());
        QCOMPARE(theme.get(), Theme::dark);
        QTRY_VERIFY(findChildItem(findChildItem(page, "schemeCell1"), "checkmark")->isVisible());
        click(findChildItem(page, "schemeCell0"));
        QVERIFY(light.get() && !dark.get() && !system.get());
        QCOMPARE(theme.get(), Theme::light);
        click(findChildItem(page, "schemeCell2"));
        QVERIFY(system.get() && !light.get() && !dark.get());
        QCOMPARE(theme.get(), Theme::systemDefault);
    }

    // The rule box always shows the month of today: a last-day rule marks that month's last day,
    // and day numbers the month lacks are never marked.
    void ruleBoxFollowsTheCurrentMonth_data() {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("eventType");
        QTest::addColumn<QList<qint64>>("codes");
        QTest::addColumn<QList<qint64>>("marked"); // week cells (1 = Monday) or days
        QTest::addColumn<int>("dayCells");
        QTest::addColumn<int>("leadingBlanks");
        QTest::addColumn<QString>("text");
        QTest::newRow("last day in April")
            << 2026 << 4 << 3 << QList<qint64>{99} << QList<qint64>{30} << 30 << 3 << "last day";
        QTest::newRow("last day in May")
            << 2026 << 5 << 3 << QList<qint64>{99} << QList<qint64>{31} << 31 << 5 << "last day";
        QTest::newRow("15 and last day in March")
            << 2026 << 3 << 3 << QList<qint64>{15, 99} << QList<qint64>{15, 31} << 31 << 0
            << "15 · last day";
        QTest::newRow("leap February") << 2024 << 2 << 3 << QList<qint64>{31, 29, 30, 99}
                                       << QList<qint64>{29} << 29 << 4 << "31 · 29 · 30 · last day";
        QTest::newRow("common February") << 2026 << 2 << 3 << QList<qint64>{29, 99}
                                         << QList<qint64>{28} << 28 << 0 << "29 · last day";
        QTest::newRow("week codes 7 and 1")
            << 2026 << 3 << 2 << QList<qint64>{7, 1} << QList<qint64>{1, 7} << 0 << 0 << "Mon Sun ";
        QTest::newRow("week list holds no 99")
            << 2026 << 4 << 2 << QList<qint64>{3} << QList<qint64>{3} << 0 << 0 << "Wed ";
    }
    void ruleBoxFollowsTheCurrentMonth() {
        QFETCH(int, year);
        QFETCH(int, month);
        QFETCH(int, eventType);
        QFETCH(QList<qint64>, codes);
        QFETCH(QList<qint64>, marked);
        QFETCH(int, dayCells);
        QFETCH(int, leadingBlanks);
        QFETCH(QString, text);
        ScopedCalendarEnvironment place(
            fixedEnvironment("Europe/Berlin", "en_US", year, month, 10, 10, 0));
        const auto box = ruleBoxData(eventType, {codes.begin(), codes.end()}, tidemark::now(),
                                     Calendar::current());
        QList<qint64> shown;
        if (eventType == 2) {
            QCOMPARE(box.weekLabels.size(), 7);
            for (int i = 0; i < 7; ++i) {
                if (box.weekSelected.at(i)) {
                    shown << i + 1;
                }
            }
        } else {
            QCOMPARE(box.monthHeader,
                     (QStringList{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}));
            shown = {box.selectedDays.begin(), box.selectedDays.end()};
        }
        QCOMPARE(shown, marked);
        QCOMPARE(box.dayCells, dayCells);
        QCOMPARE(box.leadingBlanks, leadingBlanks);
        QCOMPARE(box.text, text);
    }

    // The schedule's texts carry the time only for a daily rule; the next days' texts cross the
    // month's end.
    void scheduleAndDayTexts() {
        const auto& calendar = Calendar::current();
        const std::vector<DateComponents> dates = {momentComponents(2026, 3, 10, 9, 0),
                                                   momentComponents(2026, 3, 41, 9, 0)};
        QCOMPARE(scheduleDateStrings(1, dates, calendar),
                 (QStringList{"2026-03-10 / 09:00", "2026-04-10 / 09:00"}));
        QCOMPARE(scheduleDateStrings(3, dates, calendar),
                 (QStringList{"2026-03-10", "2026-04-10"}));
        QCOMPARE(dateStringForDayOffset(22, tidemark::now(), calendar), QString("2026-04-01"));
        QCOMPARE(weekdayStringForDayOffset(22, tidemark::now(), calendar), QString("Wednesday"));
        QCOMPARE(summaryDateLine(makeEvent("x", "1")), QString("2026-03-10"));

        // Each appearance of the page appends a full run.
        seedEventsOfEveryKind();
        EventScheduleModel schedule;
        schedule.setEventId("E4");
        schedule.loadEventSchedule();
        const QStringList once = schedule.dateStringInfo();
        QVERIFY(!once.isEmpty());
        QVERIFY(once.contains("2026-03-15"));
        schedule.loadEventSchedule();
        QCOMPARE(schedule.dateStringInfo(), once + once);
    }

    // Every opening shows the spinner for a moment and then an empty page; the flag stays false.
    void nextFewDaysShowsTheSpinnerThenNothing() {
        auto* page = show(R"(NextFewDaysEventView { objectName: "page"; anchors.fill: parent })");
        QVERIFY(page);
        QTRY_VERIFY(!page->property("loading").toBool());
        QCOMPARE(page->property("days").value<QObject*>()->property("numArrayForLoading").toList(),
                 (QVariantList{1, 2, 3, 4, 5, 6, 7}));
        page->setVisible(false);
        page->setVisible(true);
        QTRY_VERIFY(page->property("loading").toBool());
        QTRY_VERIFY(!page->property("loading").toBool());
        QVERIFY(
            !Setting<bool>("ALL_APP_loadingViewCallByNextFewDaysEventViewAtMainView", true).get());
    }

    void stackCardLooksFollowItsPosition_data() {
        QTest::addColumn<double>("minY");
        QTest::addColumn<bool>("disablesOpacityEffect");
        QTest::addColumn<double>("offset");
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("opacity");
        // itemHeight 200, stackedDisplayCount 2, opacityDisplayCount 2.
        QTest::newRow("front card") << 0.0 << false << 0.0 << 1.0 << 1.0;
        QTest::newRow("half a card below") << 100.0 << false << -96.0 << 0.96 << 1 - 0.5 / 3;
        QTest::newRow("one card below") << 200.0 << false << 8.0 - 200 << 0.92 << 1 - 1.0 / 3;
        QTest::newRow("third card, at the cap") << 400.0 << false << 16.0 - 400 << 0.84 << 1.0 / 3;
        QTest::newRow("fourth card, capped and gone")
            << 600.0 << false << 16.0 - 600 << 0.84 << 0.0;
        QTest::newRow("fourth card, fading disabled") << 600.0 << true << 16.0 - 600 << 0.84 << 1.0;
        QTest::newRow("far below") << 5000.0 << false << 16.0 - 5000 << 0.84 << 0.0;
        QTest::newRow("above the top") << -100.0 << false << 0.0 << 1.0 << 1.0;
    }
    void stackCardLooksFollowItsPosition() {
        QFETCH(double, minY);
        QFETCH(bool, disablesOpacityEffect);
        QFETCH(double, offset);
        QFETCH(double, scale);
        QFETCH(double, opacity);
        QCOMPARE(stackCardOffset(minY, 200, 2), offset);
        QCOMPARE(stackCardScale(minY, 200, 2), scale);
        QCOMPARE(stackCardOpacity(minY, 200, 2, disablesOpacityEffect), opacity);
    }

    void stackComesBackToItsFrontCard() {
        storeEvents({makeEvent("a", "1"), makeEvent("b", "2"), makeEvent("c", "3"),
                     makeEvent("d", "4"), makeEvent("e", "5")});
        Setting<std::int64_t>{"VS_UIOptions_currentItemIndex", 0}.set(2);
        auto* page = show(R"(VerticalStackedCards { objectName: "page"; anchors.fill: parent })");
        QVERIFY(page);
        auto* stack = findChildItem(page, "stackedCards");
        QCOMPARE(stack->property("count").toInt(), 5);
        QVariant front;
        QMetaObject::invokeMethod(stack, "frontIndex", Q_RETURN_ARG(QVariant, front));
        QCOMPARE(front.toInt(), 2);
        // Newest first: the third card is "c".
        auto* card = findChildItem(page, "stackCard2");
        QVERIFY(card);
        QCOMPARE(card->property("eventId").toString(), QString("c"));
        QCOMPARE(card->opacity(), 1.0);
    }

    void shareImageIsTheCardAtFiveTimesWithAlpha_data() {
        QTest::addColumn<QString>("background");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("content");
        QTest::addColumn<bool>("transparentCorner");
        QTest::newRow("plain background") << "noneBlankBackgroungImage"
                                          << "Dentist"
                                          << "" << true;
        QTest::newRow("long title and content, picture background")
            << "brandNewMainViewBackgroundImage" << QString(120, QChar('W'))
            << QString("A long note. ").repeated(30) << false;
    }
    void shareImageIsTheCardAtFiveTimesWithAlpha() {
        QFETCH(QString, background);
        QFETCH(QString, title);
        QFETCH(QString, content);
        QFETCH(bool, transparentCorner);
        Setting<std::string>{"UI_BGIMAGE_allAppBackgroundSettingString", ""}.set(
            background.toStdString());
        storeEvents({makeEvent("e", "1", [&](eventInfo& e) {
            e.eventTitle = title.toStdString();
            e.eventContent = content.toStdString();
        })});
        auto* card = show(R"(GenImageForEventFromView { objectName: "page"; eventId: "e" })");
        QVERIFY(card);
        QTest::qWait(50);
        QImage image;
        bool rendered = false;
        ShareEventImage::render(card, ShareEventImage::kScale, [&](QImage made) {
            image = std::move(made);
            rendered = true;
        });
        QTRY_VERIFY(rendered);

        QVERIFY(card->width() >= ShareEventImage::kMinimumWidth);
        const auto* contentLabel = findChildItem(card, "rowContent");
        QVERIFY(card->height() > (content.isEmpty() ? 0 : contentLabel->height()) + 40);
        QCOMPARE(image.size(), QSize(qRound(card->width() * 5), qRound(card->height() * 5)));
        QVERIFY(image.hasAlphaChannel());
        QCOMPARE(qAlpha(image.pixel(2, 2)) == 0, transparentCorner);

        // The title is drawn: its area holds more than the card's surface colour.
        auto* titleLabel = findChildItem(card, "rowTitle");
        const QRect titleArea =
            titleLabel->mapRectToItem(card, QRectF(0, 0, titleLabel->width(), titleLabel->height()))
                .toRect();
        const QImage titlePixels = image.copy(QRect(titleArea.topLeft() * 5, titleArea.size() * 5));
        const QRgb surface = image.pixel((titleArea.left() - 8) * 5, titleArea.center().y() * 5);
        int inked = 0;
        for (int y = 0; y < titlePixels.height(); ++y) {
            for (int x = 0; x < titlePixels.width(); ++x) {
                inked += titlePixels.pixel(x, y) != surface ? 1 : 0;
            }
        }
        QVERIFY2(inked > titlePixels.width() * titlePixels.height() / 50,
                 qPrintable(QString::number(inked)));
    }
};

QTEST_MAIN(BrowsingTest)
#include "test_browsing.moc"
