// The repeat rule and reminder editors: the selection rules, completeness, the lead times per
// type, the edit pages' change check and the order of their single-field writes (seen commit by
// commit in a real store), and a walk through each page in a window at 10:00 on Tuesday
// 10 March 2026 in Berlin. Any QML warning fails the test.
// Set TIDEMARK_RULES_RENDER_DIR to keep pictures of the pages (English and Chinese, light and
// dark) as PNG files.
// moc stops at the C++20 standard headers that the core's headers pull in; it needs none of them.
#ifndef Q_MOC_RUN
#include "QtTestSupport.h"
#include "TestSupport.h"
#include "base/Fatal.h"
#include "editing/NotiRuleModels.h"
#include "editing/RepeatRuleModels.h"
#include "editing/RuleSelection.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"
#include "shell/Haptics.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"
#include "test_main_support.h"
#endif

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>
#include <QtQml>

using namespace tidemark;
using namespace tidemark::testing;

using DraftEdit = std::function<void(tidemark::RepeatRuleDraft&)>;
Q_DECLARE_METATYPE(std::vector<std::int64_t>)
Q_DECLARE_METATYPE(DraftEdit)

namespace {

Haptics* testHaptics() {
    static auto* haptics = new Haptics;
    return haptics;
}

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

void store(const eventInfo& e) {
    auto s = Store::open();
    s.write([&] { s.add(e); });
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

    std::unique_ptr<ScopedCalendarEnvironment> environment_;
    std::unique_ptr<IsolatedStorage> storage_;
    std::unique_ptr<FakeServices> services_;
    std::unique_ptr<QQuickView> view_;
    QObject* stack_ = nullptr;

    /// Pushes `page` (a file name) with `properties` onto a StackView in a 390 x 844 window and
    /// returns it.
    QQuickItem* open(const QString& page, const QVariantMap& properties = {}, bool dark = false) {
        view_ = std::make_unique<QQuickView>();
        view_->setResizeMode(QQuickView::SizeRootObjectToView);
        view_->resize(390, 844);
        QQmlComponent component(view_->engine());
        const QString host = QStringLiteral(R"(
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark
import TideMark.Components
Pane {
    width: 390
    height: 844
    padding: 0
    Material.theme: %1 ? Material.Dark : Material.Light
    Material.accent: Theme.named("selectedDateBackground", %1)
    function push(file, properties) {
        return stack.push(Qt.resolvedUrl(file), properties, StackView.Immediate)
    }
    StackView {
        id: stack
        objectName: "stack"
        anchors.fill: parent
        initialItem: Item {}
    }
}
)")
                                 .arg(dark ? "true" : "false");
        component.setData(host.toUtf8(), moduleFileUrl(QStringLiteral("RulesTestHost.qml")));
        QObject* root = component.create();
        if (!root) {
            qWarning() << component.errors();
            return nullptr;
        }
        view_->setContent(component.url(), &component, root);
        view_->show();
        if (!QTest::qWaitForWindowExposed(view_.get())) {
            return nullptr;
        }
        stack_ = findChildItem(root, "stack");
        QVariant pushed;
        QMetaObject::invokeMethod(root, "push", Q_RETURN_ARG(QVariant, pushed),
                                  Q_ARG(QVariant, page), Q_ARG(QVariant, properties));
        auto* item = qvariant_cast<QQuickItem*>(pushed);
        QCoreApplication::processEvents();
        return item;
    }

    int depth() const { return stack_->property("depth").toInt(); }

    void click(QQuickItem* item) {
        QVERIFY(item);
        QVERIFY(item->isVisible());
        // A part that has just appeared is laid out with the next frame.
        QVERIFY(QTest::qWaitFor([&] { return item->width() > 2 && item->height() > 2; }, 1000));
        QTest::qWait(20);
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(view_.get(), Qt::LeftButton, {}, centre.toPoint());
        QCoreApplication::processEvents();
    }

    /// Drags an item vertically by `dy` pixels from its centre, in small steps.
    void drag(QQuickItem* item, int dy) {
        QVERIFY(item);
        const QPoint from =
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        QTest::mousePress(view_.get(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(view_.get(), from + QPoint(0, dy * step / 10), 16);
        }
        QTest::mouseRelease(view_.get(), Qt::LeftButton, {}, from + QPoint(0, dy), 16);
        QTest::qWait(600); // the wheel settles on a row
    }

    /// Clicks the named item of the page, scrolling the page's Flickable to it first.
    void tap(QQuickItem* page, const QString& name) {
        QQuickItem* item = findChildItem(page, name);
        QVERIFY2(item, qPrintable(name));
        QQuickItem* flick = item->parentItem();
        while (flick && !flick->inherits("QQuickFlickable")) {
            flick = flick->parentItem();
        }
        if (flick) {
            QQuickItem* content = flick->property("contentItem").value<QQuickItem*>();
            const qreal y = item->mapToItem(content, QPointF(0, 0)).y();
            const qreal maxY =
                std::max<qreal>(0, flick->property("contentHeight").toReal() - flick->height());
            flick->setProperty("contentY", std::clamp<qreal>(y - 120, 0, maxY));
            QCoreApplication::processEvents();
        }
        click(item);
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
        // One Haptics for every window's engine, so that the test can count the feedbacks.
        qmlRegisterSingletonType<Haptics>(
            "TideMark", 1, 0, "Haptics", [](QQmlEngine*, QJSEngine*) -> QObject* {
                QQmlEngine::setObjectOwnership(testHaptics(), QQmlEngine::CppOwnership);
                return testHaptics();
            });
        registerQmlTypes();
    }

    void init() {
        storage_ = std::make_unique<IsolatedStorage>();
        services_ = std::make_unique<FakeServices>();
        takeWarnings();
    }

    void cleanup() {
        view_.reset();
        services_.reset();
        storage_.reset();
        const QStringList warnings = takeWarnings();
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
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

    void leadTimesPerType_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<Codes>("codes");
        QTest::newRow("one-off") << 0 << Codes{4, 5, 7, 9};
        QTest::newRow("daily") << 1 << Codes{0, 1, 2, 3};
        QTest::newRow("weekly") << 2 << Codes{4, 5};
        QTest::newRow("monthly") << 3 << Codes{4, 5};
        QTest::newRow("yearly") << 4 << Codes{4, 5, 7, 9};
        QTest::newRow("out of range") << 5 << Codes{};
        QTest::newRow("negative") << -1 << Codes{};
    }

    void leadTimesPerType() {
        QFETCH(int, type);
        QFETCH(Codes, codes);
        QCOMPARE(listText(notiByEventType(type)), listText(codes));
    }

    // --- edit page: change check and writes ------------------------------------------------

    void repeatChangeCheckAndWrites_data() {
        using Edit = DraftEdit;
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<bool>("savable");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("nothing changed") << Edit([](RepeatRuleDraft&) {}) << false << QStringList{};
        QTest::newRow("reordered weekdays") << Edit([](RepeatRuleDraft& d) {
            d.week = {3, 1};
        }) << true << QStringList{"eventDateWhenEveryWeek"};
        QTest::newRow("weekly emptied")
            << Edit([](RepeatRuleDraft& d) { d.week.clear(); }) << false << QStringList{};
        QTest::newRow("other type's field alone")
            << Edit([](RepeatRuleDraft& d) { d.hour = 7; }) << false << QStringList{};
        QTest::newRow("to daily") << Edit([](RepeatRuleDraft& d) { d.type = 1; }) << true
                                  << QStringList{"eventType", "eventDateWhenEveryDayHour",
                                                 "eventDateWhenEveryDayMin", "eventNotiOrNot"};
        QTest::newRow("to yearly")
            << Edit([](RepeatRuleDraft& d) { d.type = 4; }) << true
            << QStringList{"eventType", "eventStartDateYear", "eventStartDateMonth",
                           "eventStartDateDay", "eventNotiOrNot"};
        QTest::newRow("to monthly without day")
            << Edit([](RepeatRuleDraft& d) { d.type = 3; }) << false << QStringList{};
        QTest::newRow("to monthly") << Edit([](RepeatRuleDraft& d) {
            d.type = 3;
            d.month = {99};
        }) << true << QStringList{"eventType", "eventDateWhenEveryMonth", "eventNotiOrNot"};
        QTest::newRow("wheel moved") << Edit([](RepeatRuleDraft& d) { d.intervalValue = 4; })
                                     << true << QStringList{"eventDateWhenCustomizeRepeatTimes"};
        QTest::newRow("interval off") << Edit([](RepeatRuleDraft& d) { d.intervalOn = false; })
                                      << true << QStringList{"eventHaveCustomizeInterval"};
        QTest::newRow("wheel moved while off") << Edit([](RepeatRuleDraft& d) {
            d.intervalOn = false;
            d.intervalValue = 7;
        }) << true << QStringList{"eventHaveCustomizeInterval"};
        QTest::newRow("end date moved")
            << Edit([](RepeatRuleDraft& d) { d.endDay = 29; }) << true
            << QStringList{"eventEndDateYear", "eventEndDateMonth", "eventEndDateDay"};
        QTest::newRow("end date off") << Edit([](RepeatRuleDraft& d) {
            d.endDateOn = false;
            d.endDay = 1;
        }) << true << QStringList{"eventHaveEndDateOrNot"};
        QTest::newRow("everything at once") << Edit([](RepeatRuleDraft& d) {
            d.type = 1;
            d.intervalValue = 9;
            d.endMonth = 7;
        }) << true
                                            << QStringList{"eventType",
                                                           "eventDateWhenEveryDayHour",
                                                           "eventDateWhenEveryDayMin",
                                                           "eventNotiOrNot",
                                                           "eventDateWhenCustomizeRepeatTimes",
                                                           "eventEndDateYear",
                                                           "eventEndDateMonth",
                                                           "eventEndDateDay"};
    }

    void repeatChangeCheckAndWrites() {
        QFETCH(DraftEdit, edit);
        QFETCH(bool, savable);
        QFETCH(QStringList, keys);
        const eventInfo record = weeklyEvent();
        RepeatRuleDraft draft = repeatDraftOf(record);
        QCOMPARE(draft.intervalValue, std::int64_t(2)); // the wheel is one below the record
        edit(draft);
        QCOMPARE(repeatDraftSavable(draft, record), savable);
        if (savable) {
            QCOMPARE(keysOf(repeatDraftWrites(draft, record)), keys);
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

    void editRepeatPageWritesFieldByFieldInOrder() {
        store(weeklyEvent());
        Setting<bool>("ALL_APP_cloudkitFuncStatus", false).set(true);
        EditRepeatRuleModel model;
        model.setEventId("W");
        QVERIFY(model.exists());
        QVERIFY(!model.canSave());
        QCOMPARE(model.intervalValue(), 2);
        QCOMPARE(model.weekList(), (QVariantList{1, 3}));

        model.setEventType(1);
        model.setTime(7, 30);
        model.setIntervalValue(4);
        model.setEndDate(2026, 7, 1);
        QVERIFY(model.canSave());

        services_->log->clear();
        FieldWriteRecorder recorder("W");
        QVERIFY(model.save());
        // The end date's year is written too, unchanged ("-").
        QCOMPARE(recorder.commits(),
                 (QStringList{"eventType", "eventDateWhenEveryDayHour", "eventDateWhenEveryDayMin",
                              "eventNotiOrNot", "eventDateWhenCustomizeRepeatTimes", "-",
                              "eventEndDateMonth", "eventEndDateDay"}));
        const eventInfo after = stored("W");
        QCOMPARE(after.eventType, std::int64_t(1));
        QCOMPARE(after.eventDateWhenEveryDayHour, std::int64_t(7));
        QCOMPARE(after.eventDateWhenCustomizeRepeatTimes, std::int64_t(5));
        QVERIFY(!after.eventNotiOrNot);
        QCOMPARE(after.eventNotiType, std::int64_t(5)); // only the switch goes off
        // Eight writes: eight uploads and eight publications, alternating.
        QCOMPARE(services_->log->size(), std::size_t(16));
        QCOMPARE(services_->log->at(0), std::string("cloud save Choir"));
        QCOMPARE(services_->log->at(1), std::string("widgets reload"));
        QTRY_VERIFY(!model.canSave());
    }

    void editRepeatPageRestoresAndNeedsAChange() {
        store(weeklyEvent());
        EditRepeatRuleModel model;
        model.setEventId("W");
        model.tapWeekday(1);
        model.tapWeekday(1); // Wednesday, Monday: the same days in another order
        QCOMPARE(model.weekList(), (QVariantList{3, 1}));
        QVERIFY(model.canSave());
        model.restore();
        QCOMPARE(model.weekList(), (QVariantList{1, 3}));
        QVERIFY(!model.canSave());

        model.setEventType(3);
        QVERIFY(!model.canSave()); // a monthly rule needs a day
        model.tapMonthDay(31);
        QVERIFY(model.canSave());
        model.setEventType(0);
        QVERIFY(model.canSave()); // the type differs; there is no day list to check

        // Unknown and deleted events: nothing to save.
        EditRepeatRuleModel missing;
        missing.setEventId("nope");
        QVERIFY(!missing.exists());
        missing.setEventType(1);
        QVERIFY(!missing.save());
    }

    void editRepeatPageWithoutEndDateOffersTenDaysAhead() {
        store(makeEvent("D", "1", [](eventInfo& e) { e.eventType = 1; }));
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

    void editNotiPageWritesOffAtOnceAndConfirmsInOrder() {
        store(weeklyEvent());
        EditNotiRuleModel model;
        model.setEventId("W");
        QCOMPARE(model.codes(), (QVariantList{4, 5}));
        QVERIFY(model.notiOn());
        QCOMPARE(model.selectedCode(), 5);
        QVERIFY(model.needsTime());
        QVERIFY(model.canConfirm());

        FieldWriteRecorder recorder("W");
        model.setNotiOn(false);
        QCOMPARE(recorder.commits(), QStringList{"eventNotiOrNot"});
        QVERIFY(!stored("W").eventNotiOrNot);
        model.setNotiOn(true);
        QCOMPARE(recorder.commits().size(), 1); // turning it on waits for the confirm

        model.selectCode(4);
        model.setTime(21, 0);
        QVERIFY(model.confirm());
        QCOMPARE(recorder.commits(), (QStringList{"eventNotiOrNot", "eventNotiOrNot",
                                                  "eventNotiType", "eventNotiDateDayHour", "-"}));
        const eventInfo after = stored("W");
        QVERIFY(after.eventNotiOrNot);
        QCOMPARE(after.eventNotiType, std::int64_t(4));
        QCOMPARE(after.eventNotiDateDayHour, std::int64_t(21));
    }

    void editNotiPageWithLeftoverCode() {
        // A code from an earlier type marks no row and can't be confirmed while the switch is on.
        store(weeklyEvent([](eventInfo& e) { e.eventNotiType = 0; }));
        EditNotiRuleModel model;
        model.setEventId("W");
        QVERIFY(!model.codes().contains(model.selectedCode()));
        QVERIFY(model.codeChosen());
        QVERIFY(!model.canConfirm());
        model.setNotiOn(false);
        QVERIFY(model.canConfirm());
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
        const int haptics = testHaptics()->requestCount();
        tap(page, "confirmButton");
        QCOMPARE(depth(), 2); // an incomplete rule can't be confirmed
        QCOMPARE(testHaptics()->requestCount(), haptics + 1);

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
        QCOMPARE(testHaptics()->requestCount(), haptics + 7);
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
        store(weeklyEvent());
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
        store(weeklyEvent([](eventInfo& e) { e.eventDateWhenCustomizeRepeatTimes = 1; }));
        page = open("EditRepeatEventSettingPage.qml", {{"eventId", "W"}});
        QTest::qWait(200);
        QCOMPARE(modelOf(page)->property("intervalValue").toInt(), 0);
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
    }

    void notiPageWalk() {
        Setting<bool>("AE_eventRepeatOrNot", false).set(true);
        Setting<std::int64_t>("AE_newEventType", 0).set(2);
        Setting<std::int64_t> code{"AE_notiFuncSelectedType", 10};
        Setting<std::int64_t> hour{"AE_dateInputFromUserForNotiHourAndMinIntHour", 0};
        Setting<std::int64_t> minute{"AE_dateInputFromUserForNotiHourAndMinIntMin", 0};
        minute.set(45);
        auto* page = open("NotiSettingPage.qml");
        QVERIFY(page);
        QCOMPARE(hour.get(), std::int64_t(0)); // a time is set (0:45): not filled from now
        QVERIFY(findChildItem(page, "notiCode4"));
        QVERIFY(findChildItem(page, "notiCode5"));
        QVERIFY(!findChildItem(page, "notiCode7"));
        QVERIFY(!findChildItem(page, "notiCode0"));
        QVERIFY(findChildItem(page, "noCodeText")->isVisible());
        QVERIFY(!findChildItem(page, "timeSection")->isVisible());
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));

        tap(page, "notiCode5");
        QCOMPARE(code.get(), std::int64_t(5));
        QVERIFY(!findChildItem(page, "noCodeText")->isVisible());
        QVERIFY(findChildItem(findChildItem(page, "notiCode5"), "checkmark")->isVisible());
        QVERIFY(!findChildItem(findChildItem(page, "notiCode4"), "checkmark")->isVisible());
        QVERIFY(findChildItem(page, "timeSection")->isVisible());
        tap(page, "shortcut2100");
        QCOMPARE(hour.get(), std::int64_t(21));
        QCOMPARE(minute.get(), std::int64_t(0));
        QCOMPARE(findChildItem(page, "hourWheel")->property("currentIndex").toInt(), 21);
        tap(page, "shortcut0900");
        QCOMPARE(hour.get(), std::int64_t(9));
        QCOMPARE(symbolOf(page, "confirmButton"), QString("checkmark"));
        tap(page, "confirmButton");
        QCOMPARE(depth(), 1);

        // A daily event offers four codes and no time of day.
        Setting<std::int64_t>("AE_newEventType", 0).set(1);
        code.set(10);
        page = open("NotiSettingPage.qml");
        QVERIFY(findChildItem(page, "notiCode3"));
        tap(page, "notiCode1");
        QVERIFY(!findChildItem(page, "timeSection")->isVisible());
        QCOMPARE(code.get(), std::int64_t(1));
    }

    void editNotiPageWalk() {
        store(weeklyEvent());
        auto* page = open("EditNotiSettingPage.qml", {{"eventId", "W"}});
        QVERIFY(page);
        QVERIFY(findChildItem(page, "notiEditor")->isVisible());
        QVERIFY(findChildItem(findChildItem(page, "notiCode5"), "checkmark")->isVisible());
        QCOMPARE(findChildItem(page, "hourWheel")->property("currentIndex").toInt(), 9);

        tap(page, "notiSwitch");
        QVERIFY(!stored("W").eventNotiOrNot); // written without a confirm
        QVERIFY(!findChildItem(page, "notiEditor")->isVisible());
        tap(page, "notiSwitch");
        QVERIFY(!stored("W").eventNotiOrNot);
        tap(page, "notiCode4");
        tap(page, "shortcut1200");
        tap(page, "confirmButton");
        QCOMPARE(depth(), 1);
        const eventInfo after = stored("W");
        QVERIFY(after.eventNotiOrNot);
        QCOMPARE(after.eventNotiType, std::int64_t(4));
        QCOMPARE(after.eventNotiDateDayHour, std::int64_t(12));
        QCOMPARE(after.eventNotiDateDayMin, std::int64_t(0));

        // A leftover code of another type marks no row.
        store(weeklyEvent([](eventInfo& e) { e.eventNotiType = 1; }));
        page = open("EditNotiSettingPage.qml", {{"eventId", "W"}});
        QVERIFY(!findChildItem(findChildItem(page, "notiCode4"), "checkmark")->isVisible());
        QVERIFY(!findChildItem(findChildItem(page, "notiCode5"), "checkmark")->isVisible());
        QVERIFY(findChildItem(page, "noCodeText")->isVisible());
        QCOMPARE(symbolOf(page, "confirmButton"), QString("keyboard.badge.ellipsis"));
    }

    // --- pictures ----------------------------------------------------------------------------

    void renderPages_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("type");
        QTest::newRow("repeat-daily") << "repeat-daily"
                                      << "RepeatEventSettingPage.qml" << 1;
        QTest::newRow("repeat-weekly") << "repeat-weekly"
                                       << "RepeatEventSettingPage.qml" << 2;
        QTest::newRow("repeat-monthly") << "repeat-monthly"
                                        << "RepeatEventSettingPage.qml" << 3;
        QTest::newRow("repeat-yearly") << "repeat-yearly"
                                       << "RepeatEventSettingPage.qml" << 4;
        QTest::newRow("repeat-none") << "repeat-none"
                                     << "RepeatEventSettingPage.qml" << 0;
        QTest::newRow("edit-repeat-weekly") << "edit-repeat-weekly"
                                            << "EditRepeatEventSettingPage.qml" << 2;
        QTest::newRow("edit-repeat-monthly") << "edit-repeat-monthly"
                                             << "EditRepeatEventSettingPage.qml" << 3;
        QTest::newRow("noti") << "noti"
                              << "NotiSettingPage.qml" << 4;
        QTest::newRow("noti-daily") << "noti-daily"
                                    << "NotiSettingPage.qml" << 1;
        QTest::newRow("edit-noti") << "edit-noti"
                                   << "EditNotiSettingPage.qml" << 2;
    }

    void renderPages() {
        QFETCH(QString, name);
        QFETCH(QString, file);
        QFETCH(int, type);
        store(weeklyEvent([&](eventInfo& e) {
            e.eventType = type;
            e.eventDateWhenEveryMonth = encodeDayListArchive({1, 15, 99});
        }));
        Setting<bool>("AE_eventRepeatOrNot", false).set(true);
        Setting<std::int64_t>("AE_newEventType", 0).set(type);
        Setting<bool>("AE_newEventTypeHaveIntervalInfo", false).set(type != 0);
        Setting<Bytes>("AE_weekArrayForAppStorageList", {})
            .set(encodeDayListArchive({1, 2, 3, 4, 5}));
        Setting<Bytes>("AE_monthArrayForAppStorageList", {}).set(encodeDayListArchive({10, 31}));
        Setting<std::int64_t>("AE_notiFuncSelectedType", 10).set(type == 1 ? 2 : 5);
        const QString outDir = qEnvironmentVariable("TIDEMARK_RULES_RENDER_DIR");
        for (const char* locale : {"en_US", "zh_CN"}) {
            ScopedCalendarEnvironment place(
                fixedEnvironment("Europe/Berlin", locale, 2026, 3, 10, 10, 0));
            installTranslations(*QCoreApplication::instance(), locale);
            for (bool dark : {false, true}) {
                const QVariantMap properties =
                    file.startsWith("Edit") ? QVariantMap{{"eventId", "W"}} : QVariantMap{};
                auto* page = open(file, properties, dark);
                QVERIFY(page);
                QTest::qWait(300);
                const QImage image = view_->grabWindow();
                QVERIFY(!image.isNull());
                if (!outDir.isEmpty()) {
                    QDir().mkpath(outDir);
                    QVERIFY(image.save(QStringLiteral("%1/%2-%3-%4.png")
                                           .arg(outDir, name, locale, dark ? "dark" : "light")));
                    // The end of a page that runs past the window.
                    QQuickItem* flick = nullptr;
                    for (auto* item : page->findChildren<QQuickItem*>()) {
                        if (item->inherits("QQuickFlickable")) {
                            flick = item;
                            break;
                        }
                    }
                    const qreal overflow =
                        flick->property("contentHeight").toReal() - flick->height();
                    if (overflow > 0) {
                        flick->setProperty("contentY", overflow);
                        QTest::qWait(100);
                        QVERIFY(view_->grabWindow().save(
                            QStringLiteral("%1/%2-%3-%4-end.png")
                                .arg(outDir, name, locale, dark ? "dark" : "light")));
                    }
                }
            }
        }
        installTranslations(*QCoreApplication::instance(), "en_US");
    }
};

QTEST_MAIN(EditingRulesTest)
#include "test_editing_rules.moc"
