// The new-event form at 08:00 on Tuesday 10 March 2026 in Berlin: its view model over a real
// store and real settings (checks, reset, the one load, reactions, explanations, add, save,
// delete), then the page in the window, driven by taps. No translator is installed, so texts are
// their keys. Any QML warning fails the test.
#include "QtTestSupport.h"
#include "editing/AddNewEventForm.h"
#include "editing/FormDatePickerModel.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"
#include "shell/tideMarkApp.h"

#include <QKeySequence>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>

using namespace tidemark;
using namespace tidemark::testing;
using Action = tidemark::AddNewEventForm::ConfirmAction;

namespace {

std::optional<eventInfo> storedEvent(const std::string& id) {
    return Store::open().object<eventInfo>(id);
}

/// A weekly event with every field of the form set, a reminder, an end date and an interval.
eventInfo fullEvent() {
    return makeEvent("EDIT1", "20250101093000", [](eventInfo& e) {
        e.eventTitle = "Choir";
        e.eventContent = "Bring the scores";
        e.eventRepeatOrNot = true;
        e.eventType = 2;
        e.eventDateWhenEveryWeek = encodeDayListArchive({2, 4});
        e.eventHaveCustomizeInterval = true;
        e.eventDateWhenCustomizeRepeatTimes = 5;
        e.eventNotiOrNot = true;
        e.eventNotiType = 5;
        e.eventNotiDateDayHour = 9;
        e.eventNotiDateDayMin = 30;
        e.eventNotiId = "NOTI-OLD";
        e.eventHaveEndDateOrNot = true;
        e.eventEndDateYear = 2026;
        e.eventEndDateMonth = 6;
        e.eventEndDateDay = 30;
        e.eventStarOrNot = true;
        e.eventColorString = "colorForUserSelection04";
        e.backupDataType01 = 7;
        e.backupDataType02 = "kept?";
        e.backupDataType03 = "no";
    });
}

/// One state of the form's inputs and the alert it gives ("" when every check passes).
struct FormCheck {
    int type;      // -1: repeat off, else repeat on with this type
    QString week;  // "-": no list at all
    int notiType;  // -1: reminder off; 10 is no lead time chosen
    QString share; // "-": sharing off, else "picked group/event's group"
    QString title, alert;
};

/// A date as yyyymmdd, for comparing the form's year, month and day at once.
int ymd(std::int64_t year, std::int64_t month, std::int64_t day) {
    return static_cast<int>(year * 10000 + month * 100 + day);
}

int indexOf(const CallLog& log, const std::string& entry) {
    const auto it = std::find(log->begin(), log->end(), entry);
    return it == log->end() ? -1 : static_cast<int>(it - log->begin());
}

} // namespace

Q_DECLARE_METATYPE(FormCheck)

class EditingFormTest : public QObject {
    Q_OBJECT

private:
    ShellFixture fixture_;
    LaunchedApp app_;
    AddNewEventInputs inputs_; // a second declaration of the form's keys, as a sub-page has

    std::unique_ptr<AddNewEventForm> editForm(const std::string& id) {
        auto form = std::make_unique<AddNewEventForm>();
        form->setEditOrAddNewEventCheckValue(true);
        form->setEventId(QString::fromStdString(id));
        form->setResetAllDataWhenEnterFromCardView(true);
        form->appeared();
        return form;
    }
    QQuickItem* inPage(const QString& name) const { return findChildItem(app_.topPage(), name); }
    void openForm() {
        QVERIFY(app_.launch());
        app_.tap("tab_addNewEvent");
        QVERIFY(app_.reaches("addNewEventPage"));
    }

private slots:
    void initTestCase() {
        trapWarnings();
        QQuickStyle::setStyle(QStringLiteral("Material"));
    }
    void init() { fixture_.init(); }
    void cleanup() {
        app_.close();
        app_.app.reset();
        fixture_.cleanup();
    }

    // ---- the view model ---------------------------------------------------------------------

    void checksFailInTheirOrder_data() {
        QTest::addColumn<FormCheck>("c");
        QTest::newRow("repeat without type, no title: the repeat speaks first")
            << FormCheck{0, "-", -1, "-", "", kAlertRepeat};
        QTest::newRow("weekly, empty week") << FormCheck{2, "", -1, "-", "t", kAlertRepeat};
        QTest::newRow("monthly, no list") << FormCheck{3, "-", -1, "-", "t", kAlertRepeat};
        QTest::newRow("unknown type") << FormCheck{9, "-", -1, "-", "t", kAlertRepeat};
        QTest::newRow("a type beyond yearly that passes") << FormCheck{8, "-", -1, "-", "t", ""};
        QTest::newRow("weekly with days, no title") << FormCheck{2, "3", -1, "-", "", kAlertTitle};
        QTest::newRow("repeat off needs no type") << FormCheck{-1, "-", -1, "-", "x", ""};
        QTest::newRow("a title of blanks passes; no lead time fails")
            << FormCheck{-1, "-", 10, "-", "  ", kAlertNoti};
        QTest::newRow("lead time 0 is a choice") << FormCheck{-1, "-", 0, "-", "x", ""};
        QTest::newRow("sharing without group, after a failing reminder")
            << FormCheck{-1, "-", 10, "/", "x", kAlertNoti};
        QTest::newRow("sharing without group") << FormCheck{-1, "-", -1, "/", "x", kAlertShare};
        QTest::newRow("sharing with a group not stored")
            << FormCheck{-1, "-", -1, "G2/G1", "x", kAlertShare};
        QTest::newRow("sharing with a stored group") << FormCheck{-1, "-", -1, "G1/", "x", ""};
    }
    void checksFailInTheirOrder() {
        QFETCH(FormCheck, c);
        const auto [type, week, notiType, share, title, alert] = c;
        auto s = Store::open();
        s.write([&] { s.add(shareGroup{"G1", "Family", 0, "", ""}); });
        AddNewEventForm form;
        form.resetAllData();
        inputs_.eventRepeatOrNot = type >= 0;
        inputs_.newEventType = std::max(type, 0);
        if (week != "-") {
            inputs_.weekArrayForAppStorageList =
                encodeDayListArchive(week.isEmpty() ? std::vector<std::int64_t>{}
                                                    : std::vector<std::int64_t>{week.toLongLong()});
        }
        inputs_.setNotiForThisEvent = notiType >= 0;
        if (notiType >= 0) {
            inputs_.notiFuncSelectedType = notiType;
        }
        inputs_.shareToOtherPeople = share != "-";
        if (share != "-") {
            inputs_.eventShareGroupId = share.section('/', 0, 0).toStdString();
            inputs_.GroupIdForThisEvent = share.section('/', 1, 1).toStdString();
        }
        form.setTitleForEventInfo(title);
        QCOMPARE(form.alertMessageKey(), alert.isEmpty() ? QString(kAlertNothingChanged) : alert);
        QCOMPARE(form.confirmAction(), alert.isEmpty() ? Action::Add : Action::Alert);
        form.setEditOrAddNewEventCheckValue(true);
        QCOMPARE(form.confirmAction(), alert.isEmpty() ? Action::Save : Action::Alert);
    }

    void resetClearsTheInputsAndAFreshFormFillsTheDates() {
        inputs_.eventColorString = std::string("colorForUserSelection02");
        inputs_.GroupIdForThisEvent = std::string("G");
        inputs_.eventRepeatOrNot = true;
        inputs_.setNotiForThisEvent = true;
        inputs_.newEventType = 3;
        inputs_.intNumInputFromUserForCustomizeRepeatEvent = 11;
        inputs_.weekArrayForAppStorageList = encodeDayListArchive({1});
        inputs_.notiFuncSelectedType = 4;
        inputs_.startYear = 2020;
        inputs_.endYear = 2021;
        inputs_.loadEditTargetEventDataOnlyOneTimes = true;
        Setting<std::int64_t> cycleChoice("AE_newEventTypeForCycleOrNot", 0);
        cycleChoice = 2;

        AddNewEventForm earlier; // a page still alive sees the reset too
        AddNewEventForm form;
        form.setTitleForEventInfo("kept");
        form.setResetAllDataWhenEnterFromCardView(true);
        form.appeared();

        QVERIFY(!form.resetAllDataWhenEnterFromCardView());
        QCOMPARE(inputs_.eventColorString.get() + inputs_.GroupIdForThisEvent.get(), "");
        QVERIFY(!inputs_.eventRepeatOrNot.get() && !inputs_.setNotiForThisEvent.get());
        QCOMPARE(inputs_.newEventType.get(), 0);
        QCOMPARE(inputs_.intNumInputFromUserForCustomizeRepeatEvent.get(), 4);
        QVERIFY(inputs_.weekArrayForAppStorageList.get().empty());
        QCOMPARE(inputs_.notiFuncSelectedType.get(), 10);
        QVERIFY(!inputs_.loadEditTargetEventDataOnlyOneTimes.get());
        QCOMPARE(cycleChoice.get(), 2);
        QCOMPARE(form.titleForEventInfo(), QString("kept")); // transient, not a setting
        // The dates come from the pickers: today, and ten days ahead.
        QCOMPARE(ymd(inputs_.startYear, inputs_.startMonth, inputs_.startDay), 20260310);
        QCOMPARE(ymd(inputs_.endYear, inputs_.endMonth, inputs_.endDay), 20260320);
        QCOMPARE(ymd(form.startPickerYear(), form.startPickerMonth(), form.startPickerDay()),
                 20260310);
    }

    void editLoadsTheTargetOnceWithoutItsReactions() {
        storeEvents({fullEvent()});
        auto form = editForm("EDIT1");
        QVERIFY(inputs_.loadEditTargetEventDataOnlyOneTimes.get());
        QCOMPARE(form->titleForEventInfo(), QString("Choir"));
        QCOMPARE(form->contentForEventInfo(), QString("Bring the scores"));
        QCOMPARE(inputs_.newEventType.get(), 2);
        QCOMPARE(decodeDayListArchive(inputs_.weekArrayForAppStorageList),
                 (std::vector<std::int64_t>{2, 4}));
        QCOMPARE(inputs_.intNumInputFromUserForCustomizeRepeatEvent.get(), 4);
        // Loading the type and the repeat switch must not wipe the loaded reminder.
        QVERIFY(inputs_.setNotiForThisEvent.get());
        QCOMPARE(inputs_.notiFuncSelectedType.get(), 5);
        QCOMPARE(inputs_.notiHour.get() * 100 + inputs_.notiMin, 930);
        QCOMPARE(ymd(inputs_.endYear, inputs_.endMonth, inputs_.endDay), 20260630);
        QCOMPARE(ymd(form->endPickerYear(), form->endPickerMonth(), form->endPickerDay()),
                 20260630);
        QCOMPARE(ymd(form->startPickerYear(), form->startPickerMonth(), form->startPickerDay()),
                 20260310);
        QCOMPARE(inputs_.eventColorString.get(), "colorForUserSelection04");

        // Back from a sub-page: the user's unsaved changes stay; the event is not read again.
        inputs_.addStarToThisEvent = false;
        form->setTitleForEventInfo("Choir (new)");
        form->appeared();
        QVERIFY(!inputs_.addStarToThisEvent.get());
        QCOMPARE(form->titleForEventInfo(), QString("Choir (new)"));

        // A form opened on an id that names no event loads nothing.
        auto missing = editForm("NOPE");
        QCOMPARE(missing->titleForEventInfo(), QString());
        QCOMPARE(inputs_.newEventType.get(), 0);
    }

    void reactionsToChangesAndTheirSkips() {
        AddNewEventForm form;
        form.appeared();
        const auto chooseLeadTime = [&] {
            inputs_.setNotiForThisEvent = true;
            inputs_.notiFuncSelectedType = 6;
            inputs_.notiHour = 8;
            inputs_.notiMin = 20;
        };
        const auto reminderCleared = [&] {
            return !inputs_.setNotiForThisEvent.get() && inputs_.notiFuncSelectedType.get() == 10 &&
                   inputs_.notiHour.get() == 0 && inputs_.notiMin.get() == 0;
        };

        // A new repeat type from the repeat page (another declaration of the key) clears the
        // reminder rule, without an alert.
        inputs_.eventRepeatOrNot = true;
        inputs_.newEventType = 1;
        chooseLeadTime();
        Setting<std::int64_t>("AE_newEventType", 1).set(4);
        QVERIFY(reminderCleared());
        QVERIFY(!form.alertForRequiredMoreInfo());
        // Writing the same type again is no change.
        chooseLeadTime();
        inputs_.newEventType = 4;
        QVERIFY(!reminderCleared());

        // Switching the reminder off clears its rule; switching repeat off clears the type.
        form.setSetNotiForThisEvent(false);
        QVERIFY(reminderCleared());
        form.setEventRepeatOrNot(false);
        QCOMPARE(inputs_.newEventType.get(), 0);
        form.setEventRepeatOrNot(true);
        QCOMPARE(form.alertMessageKey(), QString(kAlertRepeat)); // a type must be chosen again

        // While an edit target is still to be loaded, the same writes are left alone.
        form.setEditOrAddNewEventCheckValue(true);
        inputs_.loadEditTargetEventDataOnlyOneTimes = false;
        chooseLeadTime();
        inputs_.newEventType = 3;
        inputs_.eventRepeatOrNot = false;
        inputs_.setNotiForThisEvent = false;
        QCOMPARE(inputs_.newEventType.get(), 3);
        QCOMPARE(inputs_.notiFuncSelectedType.get(), 6);
    }

    void startPickerMovesTheEndNumbersButNotTheEndPicker() {
        AddNewEventForm form;
        form.setTitleForEventInfo("Trip");
        form.appeared();
        form.pickStartDate(2026, 4, 30);
        QCOMPARE(ymd(inputs_.startYear, inputs_.startMonth, inputs_.startDay), 20260430);
        QCOMPARE(ymd(inputs_.endYear, inputs_.endMonth, inputs_.endDay), 20260501);
        QCOMPARE(form.endDateText(), QString("2026-03-20"));

        // Numbers written by someone else move the start picker.
        inputs_.startMonth = 7;
        QCOMPARE(form.startPickerMonth(), 7);

        // The save reads both pickers again: the end date is the untouched end picker's.
        form.addAction();
        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), 1u);
        QCOMPARE(events[0].eventStartDateMonth * 100 + events[0].eventStartDateDay, 730);
        QCOMPARE(events[0].eventEndDateMonth * 100 + events[0].eventEndDateDay, 320);
        QVERIFY(!events[0].eventHaveEndDateOrNot);

        form.pickEndDate(2027, 1, 2);
        QCOMPARE(ymd(inputs_.endYear, inputs_.endMonth, inputs_.endDay), 20270102);
        QCOMPARE(form.endDateText(), QString("2027-01-02"));
    }

    void repeatExplanationForEachType_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("interval");
        QTest::addColumn<QString>("expected");
        const QString before = "customizeStringBeforeNumcustomizeStringBeforeNumAfterEveryWord 8";
        const QString week =
            "weekStringForListRowViewForTimeline02 weekStringForListRowViewForTimeline07 ";
        const QString day = "stringForRepeatSettingExplanationEventDayTextAfterNum";
        const QString month =
            "1" + day + "15" + day + "monthSelectionNo99ForLastDayStringAtExplanation";
        QTest::newRow("daily") << 1 << false << "type1stringForRepeatSettingExplanation 07:05";
        QTest::newRow("daily, every 8")
            << 1 << true << before + "customizeStringAfterNumByDay 07:05";
        QTest::newRow("weekly") << 2 << false << "type2stringForRepeatSettingExplanation: " + week;
        QTest::newRow("weekly, every 8")
            << 2 << true << before + "customizeStringAfterNumByWeek: " + week;
        QTest::newRow("monthly") << 3 << false << "type3stringForRepeatSettingExplanation" + month;
        QTest::newRow("monthly, every 8")
            << 3 << true << before + "customizeStringAfterNumByMonth: " + month;
        QTest::newRow("yearly") << 4 << false << "type4stringForRepeatSettingExplanation03-09";
        QTest::newRow("yearly, every 8")
            << 4 << true << before + "customizeStringAfterNumByYear: 03-09";
        QTest::newRow("none") << 0 << true << "";
        QTest::newRow("beyond yearly") << 5 << false << "";
    }
    void repeatExplanationForEachType() {
        QFETCH(int, type);
        QFETCH(bool, interval);
        QFETCH(QString, expected);
        AddNewEventForm form;
        inputs_.newEventType = type;
        inputs_.newEventTypeHaveIntervalInfo = interval;
        inputs_.intNumInputFromUserForCustomizeRepeatEvent = 7;
        inputs_.byDayHour = 7;
        inputs_.byDayMin = 5;
        inputs_.weekArrayForAppStorageList = encodeDayListArchive({7, 2});
        inputs_.monthArrayForAppStorageList = encodeDayListArchive({99, 15, 1});
        inputs_.startMonth = 3;
        inputs_.startDay = 9;
        QCOMPARE(form.repeatExplanation(), expected);
    }

    void notiExplanationShowsAPickedTimeOnDayLeadsOnly() {
        AddNewEventForm form;
        const struct {
            int code, hour, minute;
            const char* expected;
        } cases[] = {
            {0, 9, 30, "noti30minsAgoBeforeEvent"},
            {3, 9, 30, "noti6hourAgoBeforeEvent"},
            {4, 0, 0, "noti0dayAgoBeforeEvent"},
            {5, 9, 0, "noti1dayAgoBeforeEvent 09:00"},
            {9, 0, 5, "noti1monthAgoBeforeEvent 00:05"},
            {10, 9, 30, ""},
            {-1, 9, 30, ""},
        };
        for (const auto& c : cases) {
            inputs_.notiFuncSelectedType = c.code;
            inputs_.notiHour = c.hour;
            inputs_.notiMin = c.minute;
            QCOMPARE(form.notiExplanation(), QString(c.expected));
        }
    }

    void addWritesTheWholeRecordThenReplansAndLeaves() {
        Haptics haptics;
        AddNewEventForm form;
        form.setHaptics(&haptics);
        form.setResetAllDataWhenEnterFromCardView(true);
        form.appeared();
        form.setTitleForEventInfo("Gym");
        form.setContentForEventInfo("Leg day");
        form.setEventColorString("colorForUserSelection03");
        inputs_.eventRepeatOrNot = true;
        inputs_.newEventType = 1;
        inputs_.byDayHour = 18;
        inputs_.byDayMin = 15;
        inputs_.newEventTypeHaveIntervalInfo = true;
        inputs_.intNumInputFromUserForCustomizeRepeatEvent = 4;
        inputs_.setNotiForThisEvent = true;
        inputs_.notiFuncSelectedType = 1;
        inputs_.addStarToThisEvent = true;
        inputs_.addMemoToThisEvent = true;
        inputs_.haveOneEndDateForRepeatEvent = true;
        inputs_.GroupIdForThisEvent = std::string("GX");
        inputs_.eventShareGroupId = std::string("other");
        QCOMPARE(form.confirmAction(), Action::Add);

        QSignalSpy dismissed(&form, &AddNewEventForm::dismissRequested);
        const bool toggleBefore = form.toggleForAddNewEventPageAnimation();
        fixture_.log()->clear();
        form.confirm();

        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), 1u);
        const eventInfo& e = events[0];
        QVERIFY(
            QRegularExpression("^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[0-9A-F]{4}-[0-9A-F]{12}$")
                .match(QString::fromStdString(e.eventId))
                .hasMatch());
        QCOMPARE(e.eventNotiId, e.eventId);
        QCOMPARE(e.eventTitle + "/" + e.eventContent, "Gym/Leg day");
        QCOMPARE(e.timeStampGenerate, "20260310080000");
        QCOMPARE(e.eventDateWhenEveryDayHour * 100 + e.eventDateWhenEveryDayMin, 1815);
        QCOMPARE(e.eventDateWhenCustomizeRepeatTimes, 5); // the wheel's index 4, plus one
        QCOMPARE(e.eventShareGroupId, "GX");              // the event's group, not the share pick
        QCOMPARE(e.eventEndDateMonth * 100 + e.eventEndDateDay, 320);
        QVERIFY(e.eventHaveEndDateOrNot && e.eventStarOrNot && e.eventHaveMemoOrNot);
        QCOMPARE(e.eventColorString, "colorForUserSelection03");
        // Widgets first (inside the write), then the whole plan again, which files the new
        // reminder.
        const CallLog& log = fixture_.log();
        const int widgets = indexOf(log, "widgets reload");
        const int removeAll = indexOf(log, "noti remove all");
        QVERIFY(widgets >= 0 && removeAll > widgets);
        QVERIFY(std::any_of(log->begin() + removeAll, log->end(), [&](const std::string& s) {
            return s.rfind("noti add " + e.eventId, 0) == 0;
        }));
        QCOMPARE(haptics.requestCount(), 1);
        QCOMPARE(form.toggleForAddNewEventPageAnimation(), !toggleBefore);
        QVERIFY(form.dismissFromAddOrEditButtonToggleValue());
        QCOMPARE(dismissed.count(), 1);
    }

    void editSaveKeepsTheIdentityAndBlanksTheReserve() {
        storeEvents({fullEvent()});
        storeEvents({makeEvent("OTHER", "20250101000000")});
        Haptics haptics;
        auto form = editForm("EDIT1");
        form->setHaptics(&haptics);
        QCOMPARE(form->confirmAction(), Action::Save);
        form->setTitleForEventInfo("Choir, alto");
        inputs_.notiFuncSelectedType = 7;
        fixture_.log()->clear();
        form->confirm();

        const auto saved = storedEvent("EDIT1").value();
        QCOMPARE(saved.eventId, "EDIT1");
        QCOMPARE(saved.eventNotiId, "NOTI-OLD");
        QCOMPARE(saved.timeStampGenerate, "20250101093000");
        QCOMPARE(saved.eventTitle, "Choir, alto");
        QCOMPARE(saved.eventNotiType, 7);
        QCOMPARE(saved.eventDateWhenCustomizeRepeatTimes, 5); // index 4 back to 5
        QCOMPARE(saved.eventEndDateMonth * 100 + saved.eventEndDateDay, 630);
        QCOMPARE(saved.backupDataType01, 0);
        QCOMPARE(saved.backupDataType02, "");
        QCOMPARE(saved.backupDataType03, "");
        // Still in store order: the save overwrote in place.
        QCOMPARE(Store::open().objects<eventInfo>().front().eventId, "EDIT1");
        const int removeAll = indexOf(fixture_.log(), "noti remove all");
        QVERIFY(removeAll >= 0);
        QVERIFY(
            std::any_of(fixture_.log()->begin() + removeAll, fixture_.log()->end(),
                        [](const std::string& s) { return s.rfind("noti add NOTI-OLD", 0) == 0; }));
        QCOMPARE(haptics.requestCount(), 1);
    }

    void savingAnEventDeletedMeanwhileWritesNothingButLeaves() {
        storeEvents({fullEvent()});
        auto form = editForm("EDIT1");
        QSignalSpy dismissed(form.get(), &AddNewEventForm::dismissRequested);
        {
            auto s = Store::open();
            s.write([&] { s.remove<eventInfo>("EDIT1"); });
        }
        fixture_.log()->clear();
        form->saveAction();
        QCOMPARE(Store::open().count<eventInfo>(), 0);
        QCOMPARE(indexOf(fixture_.log(), "widgets reload"), -1);
        QVERIFY(indexOf(fixture_.log(), "noti remove all") >= 0);
        QCOMPARE(dismissed.count(), 1);
    }

    void deleteRemovesTheEventOnlyAndLeaves() {
        storeEvents({fullEvent()});
        realmDataFunc().addMemoData("EDIT1", "M1", "memo", "", now());
        Haptics haptics;
        auto form = editForm("EDIT1");
        form->setHaptics(&haptics);
        QSignalSpy dismissed(form.get(), &AddNewEventForm::dismissRequested);
        fixture_.log()->clear();
        form->deleteAction();
        QVERIFY(!storedEvent("EDIT1"));
        QCOMPARE(Store::open().count<memoDataForNotiObject>(), 1);
        QCOMPARE(indexOf(fixture_.log(), "noti remove all"), -1);
        QVERIFY(indexOf(fixture_.log(), "widgets reload") >= 0);
        QCOMPARE(haptics.requestCount(), 1);
        QCOMPARE(dismissed.count(), 1);
        QVERIFY(form->dismissFromAddOrEditButtonToggleValue());
    }

    void datePickerLaysOutTheMonthFromTheFirstWeekday() {
        FormDatePickerModel march;
        march.setYear(2026);
        march.setMonth(3);
        // 1 March 2026 is a Sunday, the first weekday of en_US: no leading blanks, five weeks.
        QCOMPARE(march.cells().size(), 35);
        QCOMPARE(march.cells().first().toInt(), 1);
        QCOMPARE(march.title(), QString("March 2026"));
        march.moveMonth(-3);
        QCOMPARE(march.year() * 100 + march.month(), 202512);
        QCOMPARE(march.daysInMonth(2028, 2), 29);
        ScopedCalendarEnvironment german(fixedEnvironment("Europe/Berlin", "de_DE", 2026, 3, 10));
        FormDatePickerModel mondayFirst;
        mondayFirst.setYear(2026);
        mondayFirst.setMonth(3);
        QCOMPARE(mondayFirst.cells().indexOf(QVariant(1)), 6);
        QCOMPARE(mondayFirst.cells().size(), 42);
    }

    // Any day is a few taps away: the title opens the years, a year its months, a month its
    // days; the keyboard does the same. Years, months and days out of the range don't react.
    void datePickerReachesAnyDayInAFewTaps_data() {
        QTest::addColumn<QString>("range"); // minimum and maximum, "" for open
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("picks");
        const QString title = "datePickerTitle", back = "datePickerPrevious",
                      next = "datePickerNext";
        QTest::newRow("a birthday in 1985")
            << "" << QStringList{title, back, back, "yearCell_1985", "monthCell_6", "dateCell_14"}
            << "1985-06-14";
        QTest::newRow("new year 2100")
            << "" << QStringList{title,           next,          next,        next, next,
                                 "yearCell_2100", "monthCell_1", "dateCell_1"}
            << "2100-01-01";
        QTest::newRow("nothing before the start")
            << "2026-03-10 3000-12-31"
            << QStringList{title,         back,          "yearCell_2025", "yearCell_2026",
                           "monthCell_2", "monthCell_3", "dateCell_9",    "dateCell_10"}
            << "2026-03-10";
        QTest::newRow("nothing after the end")
            << "0-1-1 2030-06-30"
            << QStringList{title,         next,          "yearCell_2031", "yearCell_2030",
                           "monthCell_7", "monthCell_6", "dateCell_30"}
            << "2030-06-30";
        QTest::newRow("keys: a year back, a month on, a day on, a week on")
            << "" << QStringList{"Shift+PgUp", "PgDown", "Right", "Down", "Return"} << "2025-04-18";
        QTest::newRow("keys through the years")
            << "" << QStringList{"Space", title, "Left", "Return", "Down", "Return", "Return"}
            << "2026-03-10 2025-06-10";
    }
    void datePickerReachesAnyDayInAFewTaps() {
        QFETCH(QString, range);
        QFETCH(QStringList, steps);
        QFETCH(QString, picks);
        registerQmlTypes();
        QQmlEngine engine;
        PageHost host;
        QQuickItem* root = host.show(engine, R"(Item {
    objectName: "page"
    anchors.fill: parent
    property string picks: ""
    property alias picker: picker
    FormDatePicker {
        id: picker
        width: parent.width
        year: 2026; month: 3; day: 10
        onPicked: (y, m, d) => {
            parent.picks = (parent.picks ? parent.picks + " " : "") + y + "-"
                    + String(m).padStart(2, "0") + "-" + String(d).padStart(2, "0")
            year = y; month = m; day = d
        }
    }
})");
        QVERIFY(root);
        auto* picker = qvariant_cast<QQuickItem*>(root->property("picker"));
        const QStringList sides = range.split(' ', Qt::SkipEmptyParts);
        for (int i = 0; i < sides.size(); ++i) {
            const QStringList ymd = sides[i].split('-');
            const char* unit[] = {"Year", "Month", "Day"};
            for (int k = 0; k < 3; ++k) {
                picker->setProperty(QByteArray(i == 0 ? "minimum" : "maximum") + unit[k],
                                    ymd[k].toInt());
            }
        }
        picker->forceActiveFocus();
        for (const QString& step : steps) {
            if (auto* target = findChildItem(picker, step)) {
                tap(host.window(), target);
            } else {
                const QKeyCombination key = QKeySequence::fromString(step)[0];
                QVERIFY2(key.key() != Qt::Key_unknown, qPrintable(step));
                QTest::keyClick(host.window(), key.key(), key.keyboardModifiers());
            }
            QTest::qWait(20);
        }
        QCOMPARE(root->property("picks").toString(), picks);
    }

    // ---- the page in the window -------------------------------------------------------------

    void pageAddsAnEventAndKeepsInputsAcrossVisits() {
        // The plus button opens a fresh form.
        inputs_.addStarToThisEvent = true;
        openForm();
        QVERIFY(!inputs_.addStarToThisEvent.get());
        QVERIFY(!inPage("trashButton")->isVisible());

        // Confirm without a title: the badge and the alert with the title message.
        QVERIFY(inPage("confirmBadge")->isVisible());
        app_.tapInPage("confirmButton");
        QObject* alert = app_.topPage()->findChild<QObject*>("needMoreInfoAlert");
        QTRY_VERIFY(alert->property("visible").toBool());
        QCOMPARE(app_.topPage()->findChild<QObject*>("needMoreInfoMessage")->property("text"),
                 QString(kAlertTitle));
        QMetaObject::invokeMethod(alert, "accept");
        QTRY_VERIFY(!alert->property("visible").toBool());

        // Fill the title, pick a colour, the star and a day, and confirm.
        app_.tapInPage("titleField");
        typeText(app_.window(), "Dinner with Ana");
        QTRY_VERIFY(inPage("keyboardDismissButton")->isVisible());
        QVERIFY(!inPage("confirmBadge")->isVisible());
        for (const char* name : {"colorButton_colorForUserSelection05", "starSwitch", "dateCell_12",
                                 "confirmButton"}) {
            app_.tapInPage(name);
        }
        QVERIFY(app_.reaches("mainView"));
        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), 1u);
        QCOMPARE(events[0].eventTitle, "Dinner with Ana");
        QCOMPARE(events[0].eventColorString, "colorForUserSelection05");
        QVERIFY(events[0].eventStarOrNot);
        QCOMPARE(events[0].eventStartDateDay, 12);

        // Leave a half-filled form by the back button, open it again without a reset: the
        // persisted inputs are there; the typed title is not.
        const auto reopen = [&] {
            QMetaObject::invokeMethod(
                app_.item("mainView"), "openPage",
                Q_ARG(QVariant, moduleFileUrl(QStringLiteral("AddNewEventPage.qml"))),
                Q_ARG(QVariant, QVariantMap{}));
            QVERIFY(app_.reaches("addNewEventPage"));
        };
        reopen();
        app_.tapInPage("repeatSwitch");
        app_.tapInPage("memoSwitch");
        QVERIFY(inPage("endDateSwitch")->isVisible());
        app_.tapInPage("formBackButton");
        QVERIFY(app_.reaches("mainView"));
        reopen();
        QVERIFY(inPage("repeatSwitch")->property("checked").toBool());
        QVERIFY(inPage("memoSwitch")->property("checked").toBool());
        // Nothing clears the inputs after a save: the star of the event added before is still on.
        QVERIFY(inPage("starSwitch")->property("checked").toBool());
        QCOMPARE(inPage("titleField")->property("text").toString(), QString());
    }

    void rowEditRequestOpensTheFilledFormWhichDeletes() {
        storeEvents({fullEvent()});
        QVERIFY(app_.launch());
        QVERIFY(QMetaObject::invokeMethod(app_.item("calendarPageView"), "editRequested",
                                          Q_ARG(QString, "EDIT1")));
        QVERIFY(app_.reaches("addNewEventPage"));
        QCOMPARE(inPage("titleField")->property("text").toString(), QString("Choir"));
        QVERIFY(inPage("notiSwitch")->property("checked").toBool());
        QCOMPARE(inPage("endDateText")->property("text").toString(), QString("2026-06-30"));
        app_.tapInPage("trashButton");
        QVERIFY(app_.reaches("mainView"));
        QVERIFY(!storedEvent("EDIT1"));
    }

    // One event of each kind made as a user makes it: switches on the form, the repeat and
    // reminder pages, then the confirm; the stored record, and the reminders planned anew.
    void eachKindOfEventThroughThePages_data() {
        QTest::addColumn<QString>("taps");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("interval");
        QTest::addColumn<QString>("days"); // the week or month list
        QTest::addColumn<bool>("endDate");
        QTest::addColumn<int>("notiType"); // -1: no reminder
        QTest::addColumn<int>("notiHour");
        const QString repeat = "repeatSwitch repeatRow typeSegment";
        QTest::newRow("one-off, reminder a week ahead at 21:00")
            << "dateCell_20 notiSwitch notiRow notiCode7 shortcut2100 confirmButton" << 0 << false
            << "" << false << 7 << 21;
        QTest::newRow("daily every 5 days")
            << repeat + "1 intervalSwitch confirmButton" << 1 << true << "" << false << -1 << 0;
        QTest::newRow("weekly on two days until an end date")
            << repeat + "2 weekday3 weekday1 confirmButton endDateSwitch" << 2 << false << "3,1"
            << true << -1 << 0;
        QTest::newRow("monthly on the 15th, reminder the day before at 18:00")
            << repeat + "3 monthDay15 confirmButton notiSwitch notiRow notiCode5 shortcut1800 "
                        "confirmButton"
            << 3 << false << "15" << false << 5 << 18;
        QTest::newRow("yearly") << repeat + "4 confirmButton" << 4 << false << "" << false << -1
                                << 0;
    }
    void eachKindOfEventThroughThePages() {
        QFETCH(QString, taps);
        QFETCH(int, type);
        QFETCH(bool, interval);
        QFETCH(QString, days);
        QFETCH(bool, endDate);
        QFETCH(int, notiType);
        QFETCH(int, notiHour);
        openForm();
        app_.tapInPage("titleField");
        typeText(app_.window(), "Kind");
        for (const auto& tap : taps.split(' ')) {
            QTRY_VERIFY(!app_.stack()->property("busy").toBool());
            app_.tapInPage(tap);
        }
        QVERIFY(app_.reaches("addNewEventPage"));
        fixture_.log()->clear();
        app_.tapInPage("confirmButton");
        QVERIFY(app_.reaches("mainView"));

        const auto events = Store::open().objects<eventInfo>();
        QCOMPARE(events.size(), 1u);
        const eventInfo& e = events[0];
        QCOMPARE(e.eventTitle, "Kind");
        QCOMPARE(e.eventType, type);
        QCOMPARE(e.eventRepeatOrNot, type != 0);
        QCOMPARE(e.eventHaveCustomizeInterval, interval);
        QCOMPARE(e.eventDateWhenCustomizeRepeatTimes, 5); // the wheel's 4, plus one
        QStringList stored;
        for (const auto d : decodeDayListArchive(type == 3 ? e.eventDateWhenEveryMonth
                                                           : e.eventDateWhenEveryWeek)) {
            stored << QString::number(d);
        }
        QCOMPARE(stored.join(','), days);
        QCOMPARE(e.eventHaveEndDateOrNot, endDate);
        QCOMPARE(e.eventNotiOrNot, notiType >= 0);
        if (notiType >= 0) {
            QCOMPARE(e.eventNotiType, notiType);
            QCOMPARE(e.eventNotiDateDayHour, notiHour);
            QCOMPARE(e.eventNotiDateDayMin, 0);
        }
        // The save replans from scratch: remove all, then this event's reminders.
        const auto& log = *fixture_.log();
        const int removed = indexOf(fixture_.log(), "noti remove all");
        QVERIFY(removed >= 0);
        const auto adds = std::count_if(log.begin() + removed, log.end(), [&](const auto& line) {
            return line.rfind("noti add " + e.eventNotiId + "@@", 0) == 0;
        });
        QCOMPARE(adds > 0, notiType >= 0);
    }
};

QTEST_MAIN(EditingFormTest)
#include "test_editing_form.moc"
