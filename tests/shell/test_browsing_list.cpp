// The timeline's list and the event row's texts as pure functions of events, filter settings and
// a fixed clock (10:00 on Tuesday 10 March 2026 in Berlin).
#include "QtTestSupport.h"
#include "base/Localize.h"
#include "browsing/TimelineList.h"
#include "records/DayListArchive.h"
#include "shell/Translations.h"
#include "toolkit/EventRowModel.h"

#include <QCoreApplication>
#include <QTest>
#include <set>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

std::vector<std::string> idsOf(const std::vector<stackCardItem>& items) {
    std::vector<std::string> ids;
    for (const auto& item : items) {
        ids.push_back(item.eventId);
    }
    return ids;
}

/// a: one-off, colour 01; b: daily; c: weekly with interval, starred, colour 02; d: one-off,
/// starred; e: monthly type without the repeat flag, colour 01. Stamps make e the newest.
std::vector<eventInfo> mixedEvents() {
    return {
        makeEvent("a", "20260101000001",
                  [](eventInfo& e) { e.eventColorString = "colorForUserSelection01"; }),
        makeEvent("b", "20260101000002",
                  [](eventInfo& e) {
                      e.eventRepeatOrNot = true;
                      e.eventType = 1;
                  }),
        makeEvent("c", "20260101000003",
                  [](eventInfo& e) {
                      e.eventRepeatOrNot = true;
                      e.eventType = 2;
                      e.eventHaveCustomizeInterval = true;
                      e.eventStarOrNot = true;
                      e.eventColorString = "colorForUserSelection02";
                  }),
        makeEvent("d", "20260101000004", [](eventInfo& e) { e.eventStarOrNot = true; }),
        makeEvent("e", "20260101000005",
                  [](eventInfo& e) {
                      e.eventType = 3;
                      e.eventColorString = "colorForUserSelection01";
                  }),
    };
}

using Ids = std::vector<std::string>;

using Edit = std::function<void(eventInfo&)>;

} // namespace

Q_DECLARE_METATYPE(Ids)
Q_DECLARE_METATYPE(Edit)

class BrowsingListTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ScopedCalendarEnvironment> environment_;

private slots:
    void initTestCase() {
        environment_ = std::make_unique<ScopedCalendarEnvironment>(
            fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 10, 0));
        installTranslations(*QCoreApplication::instance(), "en_US");
    }

    void filteredEventList_data() {
        QTest::addColumn<qlonglong>("kind");
        QTest::addColumn<QString>("colour");
        QTest::addColumn<Ids>("expected");
        QTest::newRow("all") << 9LL << "-" << Ids{"e", "d", "c", "b", "a"};
        QTest::newRow("not repeating is eventType 0") << 0LL << "-" << Ids{"d", "a"};
        QTest::newRow("repeating without interval") << 1LL << "-" << Ids{"b"};
        QTest::newRow("repeating with interval") << 2LL << "-" << Ids{"c"};
        QTest::newRow("starred") << 3LL << "-" << Ids{"d", "c"};
        QTest::newRow("unknown kind 4") << 4LL << "-" << Ids{};
        QTest::newRow("unknown kind -1") << -1LL << "-" << Ids{};
        QTest::newRow("empty colour means no colour") << 9LL << "" << Ids{"d", "b"};
        QTest::newRow("one colour") << 9LL << "colorForUserSelection01" << Ids{"e", "a"};
        QTest::newRow("unknown colour keeps all")
            << 9LL << "purple" << Ids{"e", "d", "c", "b", "a"};
        QTest::newRow("kind and colour together") << 3LL << "" << Ids{"d"};
    }

    void filteredEventList() {
        QFETCH(qlonglong, kind);
        QFETCH(QString, colour);
        QFETCH(Ids, expected);
        TimelineFilter filter{kind, colour.toStdString(), true};
        const auto items = tidemark::filteredEventList(mixedEvents(), filter);
        QCOMPARE(idsOf(items), expected);
        std::set<std::string> itemIds;
        for (const auto& item : items) {
            QVERIFY(!item.id.empty());
            itemIds.insert(item.id);
        }
        QCOMPARE(itemIds.size(), items.size());
    }

    void sortsStampsAsStringsNewestFirstKeepingStoreOrderOnTies() {
        const std::vector<eventInfo> events{
            makeEvent("old", "20251231235959"),
            makeEvent("tieFirst", "20260101000000"),
            makeEvent("nine", "9"),
            makeEvent("tieSecond", "20260101000000"),
            makeEvent("blank", ""),
        };
        QCOMPARE(idsOf(tidemark::filteredEventList(events, {})),
                 (Ids{"nine", "tieFirst", "tieSecond", "old", "blank"}));
    }

    void endedEventsCountForTheBoxButDrawNoRow() {
        const auto ended = endedEvent("ended", "2", 1, 8);
        const auto endsToday = endedEvent("endsToday", "1", 1, 10);
        const auto& cal = Calendar::current();
        const Date at = now();
        TimelineFilter show;
        TimelineFilter hide;
        hide.timelineViewShowEndEventOrNot = false;

        auto rows = timelineRows({ended, endsToday}, show, at, cal);
        QCOMPARE(rows.rowEventIds, (Ids{"ended", "endsToday"}));
        QVERIFY(!rows.showEmptyBox);

        rows = timelineRows({ended, endsToday}, hide, at, cal);
        QCOMPARE(rows.rowEventIds, (Ids{"endsToday"}));

        rows = timelineRows({ended}, hide, at, cal);
        QVERIFY(rows.rowEventIds.empty());
        QVERIFY(!rows.showEmptyBox);

        rows = timelineRows({}, show, at, cal);
        QVERIFY(rows.showEmptyBox);

        TimelineFilter starred;
        starred.showWhichKindEventSelection = 3;
        rows = timelineRows({ended}, starred, at, cal);
        QVERIFY(rows.rowEventIds.empty());
        QVERIFY(rows.showEmptyBox);
    }

    // Each row: the changes to a one-off event today, then the texts of its row: type | day
    // count | dates | details | next date | symbols.
    void rowTexts_data() {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QString>("texts");
        QTest::newRow("one-off today") << Edit([](eventInfo&) {}) << "|Today|2026-03-10|||";
        QTest::newRow("one-off ahead") << Edit([](eventInfo& e) {
            e.eventStartDateDay = 20;
            e.eventStarOrNot = true;
        }) << "|10 days|2026-03-20|||star.fill";
        // 30 February composes leniently to 2 March: 8 whole days back.
        QTest::newRow("one-off past, odd stored date") << Edit([](eventInfo& e) {
            e.eventStartDateMonth = 2;
            e.eventStartDateDay = 30;
            e.eventNotiOrNot = true;
        }) << "|8 days|2026-02-30|||bell.badge";
        QTest::newRow("daily every 3 days, all flags")
            << Edit([](eventInfo& e) {
                   e.eventRepeatOrNot = true;
                   e.eventType = 1;
                   e.eventStartDateDay = 1;
                   e.eventHaveCustomizeInterval = true;
                   e.eventDateWhenCustomizeRepeatTimes = 3;
                   e.eventDateWhenEveryDayHour = 9;
                   e.eventDateWhenEveryDayMin = 5;
                   e.eventStarOrNot = e.eventNotiOrNot = e.eventShareOrNot = true;
               })
            << "Every 3 days||2026-03-01 ~ ∞|Every 3 days "
               "09:05||star.fill,bell.badge,repeat,shareplay";
        QTest::newRow("weekly, codes out of order, end date") << Edit([](eventInfo& e) {
            e.eventRepeatOrNot = true;
            e.eventType = 2;
            e.eventStartDateMonth = 1;
            e.eventStartDateDay = 5;
            e.eventDateWhenEveryWeek = encodeDayListArchive({5, 1, 7});
            e.eventHaveEndDateOrNot = true;
            e.eventEndDateYear = 2026;
            e.eventEndDateMonth = 12;
            e.eventEndDateDay = 31;
        }) << "Every week||2026-01-05 ~ 2026-12-31|Every week: Mon Fri Sun|<friday>|repeat";
        QTest::newRow("monthly 31 and last day") << Edit([](eventInfo& e) {
            e.eventRepeatOrNot = true;
            e.eventType = 3;
            e.eventStartDateMonth = 1;
            e.eventStartDateDay = 31;
            e.eventDateWhenEveryMonth = encodeDayListArchive({99, 31, 1});
        }) << "Every month||2026-01-31 ~ ∞|Every month: 1 · 31 · last day|>><<|repeat";
        QTest::newRow("yearly every 2 years") << Edit([](eventInfo& e) {
            e.eventRepeatOrNot = true;
            e.eventType = 4;
            e.eventStartDateYear = 2024;
            e.eventStartDateMonth = 2;
            e.eventStartDateDay = 29;
            e.eventHaveCustomizeInterval = true;
            e.eventDateWhenCustomizeRepeatTimes = 2;
            e.eventShareOrNot = true;
        }) << "Every 2 years||2024-02-29 ~ ∞|Every 2 years: 02-29||repeat,shareplay";
    }

    void rowTexts() {
        QFETCH(Edit, edit);
        QFETCH(QString, texts);
        const auto row = eventRowData(makeEvent("row", "1", edit), now(), Calendar::current());
        QVERIFY(row.exists);
        const QString friday =
            QString::fromStdString(localized("thisWeek5StringAtComputeFuncPageForNextEventDate"));
        QCOMPARE(QStringList({row.typeText, row.dayCountText, row.datesText, row.detailsText,
                              row.nextDateText, row.symbols.join(',')})
                     .join('|'),
                 QString(texts).replace("<friday>", friday));
        const bool today = row.dayCountText == "Today";
        QCOMPARE(row.isToday, today);
        QCOMPARE(row.dayCountNumber.isEmpty(), row.dayCountText.isEmpty() || today);
    }
};

QTEST_GUILESS_MAIN(BrowsingListTest)
#include "test_browsing_list.moc"
