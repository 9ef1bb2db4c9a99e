// The repeat rule and reminder editors: the selection rules, completeness, the lead times per
// type, the edit pages' change check and the order of their single-field writes (seen commit by
// commit in a real store), and a walk through each page in a window at 10:00 on Tuesday
// 10 March 2026 in Berlin. Any QML warning fails the test.
// Set TIDEMARK_RULES_RENDER_DIR to keep pictures of the pages (English and Chinese, light and
// dark) as PNG files.
#include "QtTestSupport.h"
#include "base/Fatal.h"
#include "editing/NotiRuleModels.h"
#include "editing/RepeatRuleModels.h"
#include "editing/RuleSelection.h"
#include "platform/linux/Haptics.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>
#include <QtQml>

using namespace tidemark;
using namespace tidemark::testing;

using DraftEdit = std::function<void(tidemark::RepeatRuleDraft&)>;
Q_DECLARE_METATYPE(std::vector<std::int64_t>)
Q_DECLARE_METATYPE(DraftEdit)

namespace {

using Codes = std::vector<std::int64_t>;

QString listText(const Codes& list) {
    QStringList parts;
    for (auto c : list) {
        parts << QString::number(c);
    }
    return parts.join(',');
}

/// A weekly event on Monday and Wednesday with a reminder one day ahead at 09:00, every 3 weeks
/// (wheel 2), ending 30 June 2026.
eventInfo weeklyEvent(const std::function<void(eventInfo&)>& edit = {}) {
    return makeEvent("W", "20260101000000", [&](eventInfo& e) {
        e.eventTitle = "Choir";
        e.eventRepeatOrNot = true;
        e.eventType = 2;
        e.eventDateWhenEveryWeek = encodeDayListArchive({1, 3});
        e.eventHaveCustomizeInterval = true;
        e.eventDateWhenCustomizeRepeatTimes = 3;
        e.eventNotiOrNot = true;
        e.eventNotiType = 5;
        e.eventNotiDateDayHour = 9;
        e.eventHaveEndDateOrNot = true;
        e.eventEndDateYear = 2026;
        e.eventEndDateMonth = 6;
        e.eventEndDateDay = 30;
        if (edit) {
            edit(e);
        }
    });
}

eventInfo stored(const std::string& id) {
    return unwrap(Store::open().object<eventInfo>(id));
}

QStringList keysOf(const std::vector<FieldWrite>& writes) {
    QStringList keys;
    for (const auto& w : writes) {
        keys << QString::fromStdString(w.key);
    }
    return keys;
}

} // namespace

class EditingRulesTest : public QObject {
    Q_OBJECT

    ShellFixture fixture_;
    std::unique_ptr<ScopedCalendarEnvironment> environment_;
    std::unique_ptr<QQmlEngine> engine_;
    PageHost host_;

    QQuickItem* open(const QString& page, const QVariantMap& properties = {}) {
        return host_.push(*engine_, page, properties);
    }
    int depth() const { return host_.depth(); }
    void click(QQuickItem* item) { host_.tap(item); }
    void tap(QQuickItem* page, const QString& name) { host_.tapIn(page, name); }

    /// Drags an item vertically by `dy` pixels from its centre, in small steps.
    void drag(QQuickItem* item, int dy) {
        QVERIFY(item);
        const QPoint from =
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        QTest::mousePress(host_.window(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(host_.window(), from + QPoint(0, dy * step / 10), 16);
        }
        QTest::mouseRelease(host_.window(), Qt::LeftButton, {}, from + QPoint(0, dy), 16);
        QTest::qWait(600); // the wheel settles on a row
    }

    QString symbolOf(QQuickItem* page, const QString& name) {
        auto* item = findChildItem(page, name);
        return item ? item->property("symbol").toString() : QString("<missing>");
    }

    QObject* modelOf(QQuickItem* page) {
        return page->findChild<QObject*>(QStringLiteral("model"));
    }

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

    // --- selections ---------------------------------------------------------------------------

    void weekdayTaps_data() {
        QTest::addColumn<Codes>("taps"); // 8 is the Monday-to-Friday shortcut
        QTest::addColumn<Codes>("expected");
        QTest::addColumn<bool>("lit");
        QTest::newRow("taps append in order") << Codes{3, 1} << Codes{3, 1} << false;
        QTest::newRow("a second tap removes") << Codes{3, 1, 3} << Codes{1} << false;
        QTest::newRow("run in order lights")
            << Codes{1, 2, 3, 4, 5} << Codes{1, 2, 3, 4, 5} << true;
        QTest::newRow("reverse order stays dark")
            << Codes{5, 4, 3, 2, 1} << Codes{5, 4, 3, 2, 1} << false;
        QTest::newRow("shortcut reorders into a run")
            << Codes{5, 4, 3, 2, 1, 8} << Codes{1, 2, 3, 4, 5} << true;
        QTest::newRow("run followed by 6 lights")
            << Codes{1, 2, 3, 4, 5, 6} << Codes{1, 2, 3, 4, 5, 6} << true;
        QTest::newRow("lit shortcut leaves 6 alone")
            << Codes{1, 2, 3, 4, 5, 6, 8} << Codes{6} << false;
        QTest::newRow("run after 7 lights and clears")
            << Codes{7, 1, 2, 3, 4, 5, 8} << Codes{7} << false;
        QTest::newRow("broken run stays dark")
            << Codes{1, 2, 3, 6, 4, 5} << Codes{1, 2, 3, 6, 4, 5} << false;
        QTest::newRow("dark shortcut keeps other days first")
            << Codes{1, 2, 3, 6, 4, 5, 8} << Codes{6, 1, 2, 3, 4, 5} << true;
        QTest::newRow("shortcut on nothing, twice") << Codes{8, 8} << Codes{} << false;
        QTest::newRow("shortcut completes a partial week")
            << Codes{4, 2, 8} << Codes{1, 2, 3, 4, 5} << true;
    }

    void weekdayTaps() {
        QFETCH(Codes, taps);
        QFETCH(Codes, expected);
        QFETCH(bool, lit);
        Codes week;
        for (auto t : taps) {
            if (t == 8) {
                tapWeekdayShortcut(week);
            } else {
                toggleDayCode(week, t);
            }
        }
        QCOMPARE(listText(week), listText(expected));
        QCOMPARE(weekdayShortcutLit(week), lit);
    }

    void monthDayTaps_data() {
        QTest::addColumn<Codes>("taps"); // 0 is the delete.left cell
        QTest::addColumn<Codes>("expected");
        QTest::newRow("31 then last day") << Codes{31, 99} << Codes{99};
        QTest::newRow("29 30 31 then last day") << Codes{29, 5, 30, 31, 99} << Codes{5, 99};
        QTest::newRow("last day then 28 keeps both") << Codes{99, 28} << Codes{99, 28};
        QTest::newRow("last day then 30") << Codes{99, 1, 30} << Codes{1, 30};
        QTest::newRow("deselecting 31 leaves nothing else") << Codes{31, 1, 31} << Codes{1};
        QTest::newRow("deselecting last day") << Codes{99, 2, 99, 29} << Codes{2, 29};
        QTest::newRow("days 1 to 28 toggle freely") << Codes{12, 1, 28, 12} << Codes{1, 28};
        QTest::newRow("delete.left empties") << Codes{3, 99, 17, 0} << Codes{};
    }

    void monthDayTaps() {
        QFETCH(Codes, taps);
        QFETCH(Codes, expected);
        Codes month;
        for (auto t : taps) {
            if (t == 0) {
                month.clear();
            } else {
                tapMonthDay(month, t);
            }
        }
        QCOMPARE(listText(month), listText(expected));
    }

    void completeness_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<Codes>("week");
        QTest::addColumn<Codes>("month");
        QTest::addColumn<bool>("complete");
        QTest::newRow("no type") << 0 << Codes{1} << Codes{1} << false;
        QTest::newRow("daily") << 1 << Codes{} << Codes{} << true;
        QTest::newRow("weekly without day") << 2 << Codes{} << Codes{5} << false;
        QTest::newRow("weekly with day") << 2 << Codes{7} << Codes{} << true;
        QTest::newRow("monthly without day") << 3 << Codes{2} << Codes{} << false;
        QTest::newRow("monthly last day") << 3 << Codes{} << Codes{99} << true;
        QTest::newRow("yearly") << 4 << Codes{} << Codes{} << true;
        QTest::newRow("unknown type") << 5 << Codes{1} << Codes{1} << false;
    }

    void completeness() {
        QFETCH(int, type);
        QFETCH(Codes, week);
        QFETCH(Codes, month);
        QFETCH(bool, complete);
        QCOMPARE(repeatRuleComplete(type, week, month), complete);
    }

    // --- edit page: change check and writes ------------------------------------------------

    void repeatChangeCheckAndWrites_data() {
        using Edit = DraftEdit;
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QString>("keys"); // written in this order; "-" when it can't be saved
        const QString toDaily = "eventType eventDateWhenEveryDayHour eventDateWhenEveryDayMin "
                                "eventNotiOrNot";
        const QString endDate = "eventEndDateYear eventEndDateMonth eventEndDateDay";
        QTest::newRow("nothing changed") << Edit([](RepeatRuleDraft&) {}) << "-";
        QTest::newRow("reordered weekdays") << Edit([](RepeatRuleDraft& d) {
            d.week = {3, 1};
        }) << "eventDateWhenEveryWeek";
        QTest::newRow("weekly emptied") << Edit([](RepeatRuleDraft& d) { d.week.clear(); }) << "-";
        QTest::newRow("other type's field alone")
            << Edit([](RepeatRuleDraft& d) { d.hour = 7; }) << "-";
        QTest::newRow("to daily") << Edit([](RepeatRuleDraft& d) { d.type = 1; }) << toDaily;
        QTest::newRow("to yearly") << Edit([](RepeatRuleDraft& d) { d.type = 4; })
                                   << "eventType eventStartDateYear eventStartDateMonth "
                                      "eventStartDateDay eventNotiOrNot";
        QTest::newRow("to monthly without day")
            << Edit([](RepeatRuleDraft& d) { d.type = 3; }) << "-";
        QTest::newRow("to monthly") << Edit([](RepeatRuleDraft& d) {
            d.type = 3;
            d.month = {99};
        }) << "eventType eventDateWhenEveryMonth eventNotiOrNot";
        QTest::newRow("wheel moved") << Edit([](RepeatRuleDraft& d) { d.intervalValue = 4; })
                                     << "eventDateWhenCustomizeRepeatTimes";
        QTest::newRow("interval off") << Edit([](RepeatRuleDraft& d) { d.intervalOn = false; })
                                      << "eventHaveCustomizeInterval";
        QTest::newRow("wheel moved while off") << Edit([](RepeatRuleDraft& d) {
            d.intervalOn = false;
            d.intervalValue = 7;
        }) << "eventHaveCustomizeInterval";
        QTest::newRow("end date moved")
            << Edit([](RepeatRuleDraft& d) { d.endDay = 29; }) << endDate;
        QTest::newRow("end date off") << Edit([](RepeatRuleDraft& d) {
            d.endDateOn = false;
            d.endDay = 1;
        }) << "eventHaveEndDateOrNot";
        QTest::newRow("everything at once") << Edit([](RepeatRuleDraft& d) {
            d.type = 1;
            d.intervalValue = 9;
            d.endMonth = 7;
        }) << toDaily + " eventDateWhenCustomizeRepeatTimes " + endDate;
    }

    void repeatChangeCheckAndWrites() {
        QFETCH(DraftEdit, edit);
        QFETCH(QString, keys);
        const eventInfo record = weeklyEvent();
        RepeatRuleDraft draft = repeatDraftOf(record);
        QCOMPARE(draft.intervalValue, std::int64_t(2)); // the wheel is one below the record
        edit(draft);
        QCOMPARE(repeatDraftSavable(draft, record), keys != "-");
        if (keys != "-") {
            QCOMPARE(keysOf(repeatDraftWrites(draft, record)).join(' '), keys);
        }
    }

    void switchedOnFieldsCompareWithTheRecord() {
        // A one-off event whose interval and end date are off: turning them on writes the switch
        // and then the value only where it differs from what the record holds.
        const eventInfo record = makeEvent("X", "1", [](eventInfo& e) {
            e.eventType = 1;
            e.eventDateWhenCustomizeRepeatTimes = 5;
            e.eventEndDateYear = 2026;
            e.eventEndDateMonth = 3;
            e.eventEndDateDay = 20;
        });
        RepeatRuleDraft draft = repeatDraftOf(record);
        draft.intervalOn = true;
        draft.endDateOn = true;
        QVERIFY(repeatDraftSavable(draft, record));
        QCOMPARE(keysOf(repeatDraftWrites(draft, record)),
                 (QStringList{"eventHaveCustomizeInterval", "eventHaveEndDateOrNot"}));
        draft.intervalValue = 4; // shows as 4, saves as 5 ... which the record has
        QCOMPARE(keysOf(repeatDraftWrites(draft, record)),
                 (QStringList{"eventHaveCustomizeInterval", "eventHaveEndDateOrNot"}));
        draft.intervalValue = 5;
        const auto writes = repeatDraftWrites(draft, record);
        QVERIFY(writes.at(1) == (FieldWrite{"eventDateWhenCustomizeRepeatTimes", std::int64_t(6)}));

        // A stored interval of 1 comes back as 0, a row the wheel doesn't have.
        QCOMPARE(
            repeatDraftOf(
                makeEvent("Y", "1", [](eventInfo& e) { e.eventDateWhenCustomizeRepeatTimes = 1; }))
                .intervalValue,
            std::int64_t(0));
    }

    void editRepeatPageWithoutEndDateOffersTenDaysAhead() {
        storeEvents({makeEvent("D", "1", [](eventInfo& e) { e.eventType = 1; })});
        EditRepeatRuleModel model;
        model.setEventId("D");
        QCOMPARE((QList<int>{model.endYear(), model.endMonth(), model.endDay()}),
                 (QList<int>{2026, 3, 20}));
        QVERIFY(!model.canSave());
        model.setEndDateOn(true);
        FieldWriteRecorder recorder("D");
        QVERIFY(model.save());
        QCOMPARE(recorder.commits(), (QStringList{"eventHaveEndDateOrNot", "eventEndDateYear",
                                                  "eventEndDateMonth", "eventEndDateDay"}));
    }

    // --- add pages: the form's settings ------------------------------------------------------

    void addRepeatModelKeepsTheFormSettings() {
        Setting<std::int64_t> type{"AE_newEventType", 0};
        Setting<std::int64_t> hour{"AE_dateInputFromUserForCustomizeRepeatEventByDayHour", 0};
        Setting<std::int64_t> minute{"AE_dateInputFromUserForCustomizeRepeatEventByDayMin", 0};
        Setting<Bytes> week{"AE_weekArrayForAppStorageList", {}};
        Setting<Bytes> month{"AE_monthArrayForAppStorageList", {}};
        Setting<std::int64_t> wheel{"AE_intNumInputFromUserForCustomizeRepeatEvent", 4};
        Setting<std::int64_t> startYear{
            "AE_dateInputFromUserForCustomizeRepeatEventStartDateIntYear", 0};

        AddRepeatRuleModel model;
        model.appear();
        // An unset daily time is filled with the time now.
        QCOMPARE(hour.get(), std::int64_t(10));
        QCOMPARE(minute.get(), std::int64_t(0));
        QCOMPARE(model.intervalValue(), 4);
        QVERIFY(!model.complete());
        QCOMPARE(model.startYear(), 2026); // the picker shows today while the date is unset
        QCOMPARE(startYear.get(), std::int64_t(0));

        model.setEventType(2);
        QCOMPARE(type.get(), std::int64_t(2));
        model.tapWeekday(6);
        model.tapWeekdayShortcut();
        QCOMPARE(listText(decodeDayListArchive(week.get())), QString("6,1,2,3,4,5"));
        QVERIFY(model.complete());
        model.tapMonthDay(30);
        model.tapMonthDay(99);
        QCOMPARE(listText(decodeDayListArchive(month.get())), QString("99"));
        model.setIntervalValue(7);
        QCOMPARE(wheel.get(), std::int64_t(7));
        model.setStartDate(2026, 12, 24);
        QCOMPARE(startYear.get(), std::int64_t(2026));

        // A time already picked is kept on the next appearance; writes made elsewhere (the form)
        // reach an open page.
        hour.set(18);
        AddRepeatRuleModel again;
        again.appear();
        QCOMPARE(again.hour(), 18);
        QCOMPARE(again.weekList(), (QVariantList{6, 1, 2, 3, 4, 5}));
        startYear.set(2030);
        QTRY_COMPARE(again.startYear(), 2030);
        type.set(0);
        QTRY_COMPARE(again.eventType(), 0);
    }

    void addNotiModelFollowsTheFormType() {
        Setting<bool> repeat{"AE_eventRepeatOrNot", false};
        Setting<std::int64_t> type{"AE_newEventType", 0};
        Setting<std::int64_t> code{"AE_notiFuncSelectedType", 10};
        Setting<std::int64_t> hour{"AE_dateInputFromUserForNotiHourAndMinIntHour", 0};

        // A fresh store with repeat on: the page reads the type as the form does, 0, none
        // chosen, and offers the codes of a one-off event, not those of a daily one.
        repeat.set(true);
        AddNotiRuleModel fresh;
        fresh.appear();
        QCOMPARE(fresh.codes(), (QVariantList{4, 5, 7, 9}));
        repeat.set(false);
        type.set(1);

        AddNotiRuleModel model;
        model.appear();
        // Not repeating: the codes of a one-off event, whatever type was left behind.
        QCOMPARE(model.codes(), (QVariantList{4, 5, 7, 9}));
        QCOMPARE(hour.get(), std::int64_t(10));
        QVERIFY(!model.codeChosen());
        repeat.set(true);
        QTRY_COMPARE(model.codes(), (QVariantList{0, 1, 2, 3}));
        model.selectCode(2);
        QCOMPARE(code.get(), std::int64_t(2));
        QVERIFY(!model.needsTime());
        model.setTime(21, 0);
        QCOMPARE(hour.get(), std::int64_t(21));
        QCOMPARE(model.codeText(2), QString("3 hours before"));
    }

    // --- the pages in a window ---------------------------------------------------------------

    void repeatPageWalk() {
        Setting<Bytes> week{"AE_weekArrayForAppStorageList", {}};
        Setting<Bytes> month{"AE_monthArrayForAppStorageList", {}};
        Setting<bool> interval{"AE_newEventTypeHaveIntervalInfo", false};
        Setting<std::int64_t> wheel{"AE_intNumInputFromUserForCustomizeRepeatEvent", 4};
        Setting<std::int64_t> startDay{"AE_dateInputFromUserForCustomizeRepeatEventStartDateIntDay",
                                       0};
        auto* page = open("RepeatEventSettingPage.qml");
        QVERIFY(page);
        QCOMPARE(depth(), 2);
        QVERIFY(findChildItem(page, "noTypeText")->isVisible());
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
        const int haptics = Haptics::instance()->requestCount();
        tap(page, "confirmButton");
        QCOMPARE(depth(), 2); // an incomplete rule can't be confirmed
        QCOMPARE(Haptics::instance()->requestCount(), haptics + 1);

        tap(page, "typeSegment2");
        QVERIFY(findChildItem(page, "weekdayGrid")->isVisible());
        QVERIFY(!findChildItem(page, "noTypeText")->isVisible());
        for (const char* cell : {"weekday5", "weekday4", "weekday3", "weekday2", "weekday1"}) {
            tap(page, cell);
        }
        QVERIFY(!findChildItem(page, "weekdayShortcut")->property("selected").toBool());
        QVERIFY(findChildItem(page, "weekday5")->property("selected").toBool());
        tap(page, "weekdayShortcut");
        QVERIFY(findChildItem(page, "weekdayShortcut")->property("selected").toBool());
        QCOMPARE(listText(decodeDayListArchive(week.get())), QString("1,2,3,4,5"));
        QCOMPARE(Haptics::instance()->requestCount(), haptics + 7);
        QCOMPARE(symbolOf(page, "confirmButton"), QString("checkmark"));

        tap(page, "typeSegment3");
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
        QCOMPARE(findChildItem(page, "monthDay7")->property("text").toString(), QString("07"));
        tap(page, "monthDay31");
        tap(page, "monthDay99");
        QVERIFY(!findChildItem(page, "monthDay31")->property("selected").toBool());
        QVERIFY(findChildItem(page, "monthDay99")->property("selected").toBool());
        QCOMPARE(listText(decodeDayListArchive(month.get())), QString("99"));
        tap(page, "monthDayClear");
        QVERIFY(decodeDayListArchive(month.get()).empty());

        tap(page, "intervalSwitch");
        QVERIFY(interval.get());
        QVERIFY(findChildItem(page, "intervalWheel")->isVisible());
        QCOMPARE(findChildItem(page, "intervalWheel")->property("count").toInt(), 12);
        QCOMPARE(findChildItem(page, "intervalUnit")->property("text").toString(),
                 QString("months"));
        QCOMPARE(findChildItem(page, "intervalWheel")->property("currentIndex").toInt(),
                 3); // shows 4
        // Turning the wheel up picks a larger number: the row it settles on.
        drag(findChildItem(page, "intervalWheel"), -60);
        QTRY_VERIFY(wheel.get() > 4);
        QCOMPARE(findChildItem(page, "intervalWheel")->property("currentIndex").toInt() + 1,
                 wheel.get());

        tap(page, "typeSegment4");
        QVERIFY(findChildItem(page, "yearlyDate")->isVisible());
        QCOMPARE(findChildItem(page, "intervalWheel")->property("count").toInt(), 10);
        QCOMPARE(startDay.get(), std::int64_t(0));
        QCOMPARE(findChildItem(page, "yearlyDate")->property("day").toInt(), 10);

        tap(page, "confirmButton");
        QCOMPARE(depth(), 1);
    }

    void editRepeatPageWalk() {
        storeEvents({weeklyEvent()});
        auto* page = open("EditRepeatEventSettingPage.qml", {{"eventId", "W"}});
        QVERIFY(page);
        QVERIFY(findChildItem(page, "warningRow")->isVisible());
        QTest::qWait(300);
        QCOMPARE(findChildItem(page, "intervalWheel")->property("currentIndex").toInt(),
                 1); // 3 stored
        QVERIFY(findChildItem(page, "endDatePicker")->isVisible());
        QCOMPARE(findChildItem(page, "endDateText")->property("text").toString(),
                 QString("2026-06-30"));
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
        tap(page, "confirmButton");
        QCOMPARE(depth(), 2);

        // Changing the type and leaving by the chevron keeps the stored rule and reminder.
        tap(page, "typeSegment3");
        QCOMPARE(findChildItem(page, "monthDay99")->property("symbol").toString(),
                 QString("forward.end"));
        QVERIFY(findChildItem(page, "lastDayGuide")->isVisible());
        tap(page, "monthDay15");
        QCOMPARE(symbolOf(page, "confirmButton"), QString("checkmark"));
        tap(page, "dismissButton");
        QCOMPARE(depth(), 1);
        QVERIFY(stored("W") == weeklyEvent());

        // The same weekdays in another order are a change, and only the list is written.
        page = open("EditRepeatEventSettingPage.qml", {{"eventId", "W"}});
        tap(page, "weekday1");
        tap(page, "weekday1");
        QCOMPARE(symbolOf(page, "confirmButton"), QString("checkmark"));
        tap(page, "restoreButton");
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
        tap(page, "weekday1");
        tap(page, "weekday1");
        FieldWriteRecorder recorder("W");
        tap(page, "confirmButton");
        QCOMPARE(depth(), 1);
        QCOMPARE(recorder.commits(), QStringList{"eventDateWhenEveryWeek"});
        QCOMPARE(listText(decodeDayListArchive(stored("W").eventDateWhenEveryWeek)),
                 QString("3,1"));
        QVERIFY(stored("W").eventNotiOrNot);

        // A new type switches the reminder off.
        page = open("EditRepeatEventSettingPage.qml", {{"eventId", "W"}});
        tap(page, "typeSegment1");
        QVERIFY(findChildItem(page, "dailyTime")->isVisible());
        tap(page, "endDateSwitch");
        tap(page, "confirmButton");
        const eventInfo after = stored("W");
        QCOMPARE(after.eventType, std::int64_t(1));
        QVERIFY(!after.eventNotiOrNot);
        QVERIFY(!after.eventHaveEndDateOrNot);

        // A stored interval of 1 is wheel value 0, a row the wheel lacks: showing it is no change.
        storeEvents({weeklyEvent([](eventInfo& e) { e.eventDateWhenCustomizeRepeatTimes = 1; })});
        page = open("EditRepeatEventSettingPage.qml", {{"eventId", "W"}});
        QTest::qWait(200);
        QCOMPARE(modelOf(page)->property("intervalValue").toInt(), 0);
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
    }

    void editNotiPageWalk() {
        storeEvents({weeklyEvent()});
        auto* page = open("EditNotiSettingPage.qml", {{"eventId", "W"}});
        QVERIFY(page);
        QVERIFY(findChildItem(page, "notiEditor")->isVisible());
        QVERIFY(findChildItem(findChildItem(page, "notiCode5"), "checkmark")->isVisible());
        QTRY_COMPARE(findChildItem(page, "hourWheel")->property("currentIndex").toInt(), 9);

        FieldWriteRecorder recorder("W");
        tap(page, "notiSwitch");
        QVERIFY(!stored("W").eventNotiOrNot); // written without a confirm
        QVERIFY(!findChildItem(page, "notiEditor")->isVisible());
        tap(page, "notiSwitch");
        QVERIFY(!stored("W").eventNotiOrNot);
        tap(page, "notiCode4");
        tap(page, "shortcut1200");
        tap(page, "confirmButton");
        QCOMPARE(depth(), 1);
        // The minute is written too, unchanged ("-").
        QCOMPARE(recorder.commits(), (QStringList{"eventNotiOrNot", "eventNotiOrNot",
                                                  "eventNotiType", "eventNotiDateDayHour", "-"}));
        const eventInfo after = stored("W");
        QVERIFY(after.eventNotiOrNot);
        QCOMPARE(after.eventNotiType, std::int64_t(4));
        QCOMPARE(after.eventNotiDateDayHour, std::int64_t(12));
        QCOMPARE(after.eventNotiDateDayMin, std::int64_t(0));

        // A leftover code of another type marks no row.
        storeEvents({weeklyEvent([](eventInfo& e) { e.eventNotiType = 1; })});
        page = open("EditNotiSettingPage.qml", {{"eventId", "W"}});
        QVERIFY(!findChildItem(findChildItem(page, "notiCode4"), "checkmark")->isVisible());
        QVERIFY(!findChildItem(findChildItem(page, "notiCode5"), "checkmark")->isVisible());
        QVERIFY(findChildItem(page, "noCodeText")->isVisible());
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
    }
};

QTEST_MAIN(EditingRulesTest)
#include "test_editing_rules.moc"
