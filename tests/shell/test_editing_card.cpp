// The event card and its pages, and the memos of an event, over a real store at 10:00 on Tuesday
// 10 March 2026 in Berlin: the view models (which fields each action writes, in which order, and
// what is blocked), then the pages driven in a window by taps. Any QML warning fails the test.
// Set TIDEMARK_CARD_RENDER_DIR to keep the rendered pages as PNG files.
#include "QtTestSupport.h"
#include "RecordSupport.h"
#include "browsing/TimelineActions.h"
#include "editing/CardViewModel.h"
#include "editing/MemoModels.h"
#include "notifications/notiFunc.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"
#include "records/realmDataFunc.h"
#include "shell/QmlTypes.h"
#include "shell/Translations.h"
#include "shell/tideMarkApp.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <QUuid>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

eventInfo stored(const std::string& id) {
    return Store::open().object<eventInfo>(id).value_or(eventInfo{});
}

bool eventStored(const std::string& id) {
    return Store::open().object<eventInfo>(id).has_value();
}

std::int64_t memoCount() {
    return Store::open().count<memoDataForNotiObject>();
}

void storeMemo(const std::string& eventId, const std::string& memoId, const std::string& stamp) {
    memoDataForNotiObject memo;
    memo.eventId = eventId;
    memo.memoId = memoId;
    memo.title = memoId;
    memo.timeStamp = stamp;
    auto s = Store::open();
    s.write([&] { s.add(memo); });
}

/// The published event with that id, as the widgets read it.
eventObjectAtWidget publishedEvent(const std::string& id) {
    for (const auto& e : publishedEvents()) {
        if (e.eventId == id) {
            return e;
        }
    }
    return {};
}

long countOf(const CallLog& log, const std::string& entry) {
    return std::count(log->begin(), log->end(), entry);
}

/// A one-off event on 20 March 2026, with `edit` applied, stored through the store's writer.
eventObject cardEvent(const std::string& id, const std::function<void(eventObject&)>& edit = {}) {
    auto event = dayEvent(id, "Concert", 2026, 3, 20, "colorForUserSelection04");
    event.eventContent = "Row 12, seat 7";
    event.eventNotiId = "N-" + id;
    if (edit) {
        edit(event);
    }
    realmDataFunc().addEventData(event);
    return event;
}

void withEndDate(eventObject& e) {
    e.eventRepeatOrNot = true;
    e.eventType = 4;
    e.eventHaveEndDateOrNot = true;
    e.eventEndDateYear = 2030;
    e.eventEndDateMonth = 6;
    e.eventEndDateDay = 1;
}

} // namespace

class EditingCardTest : public QObject {
    Q_OBJECT

    ShellFixture fixture_;
    std::unique_ptr<ScopedCalendarEnvironment> environment_;
    std::unique_ptr<tideMarkApp> app_;
    std::unique_ptr<QQmlEngine> engine_;
    PageHost host_;

    CallLog log() const { return fixture_.log(); }
    int haptics() const { return app_->haptics()->requestCount(); }
    QQuickItem* show(const QString& file, const QVariantMap& properties, bool dark = false) {
        return host_.push(*engine_, file, properties, dark);
    }
    QObject* stack() const { return host_.stack(); }
    int depth() const { return host_.depth(); }
    QQuickItem* top() const { return host_.top(); }
    /// Waits until the stack holds `pages` and stands still.
    bool reached(int pages) {
        return QTest::qWaitFor([&] { return depth() == pages && host_.settled(); });
    }
    void popTop() {
        QQmlExpression pop(qmlContext(stack()), stack(), "pop()");
        pop.evaluate();
        QVERIFY(!pop.hasError());
    }
    void click(QQuickItem* item) { host_.tap(item); }

    /// Replaces the text of a field the way a user does: focus, select all, type.
    void retype(QQuickItem* field, const QString& text) {
        click(field);
        QTRY_VERIFY(field->hasActiveFocus());
        QTest::keySequence(host_.window(), QKeySequence::SelectAll);
        QTest::keyClick(host_.window(), Qt::Key_Backspace);
        typeText(host_.window(), text);
    }

private slots:
    void initTestCase() {
        trapWarnings();
        QQuickStyle::setStyle(QStringLiteral("Material"));
        environment_ = std::make_unique<ScopedCalendarEnvironment>(
            fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 10, 0));
        installTranslations(*QCoreApplication::instance(), "en_US");
        registerQmlTypes();
        app_ = std::make_unique<tideMarkApp>();
        engine_ = std::make_unique<QQmlEngine>();
    }

    void init() {
        fixture_.init(false);
        Setting<bool>("ALL_APP_cloudkitFuncStatus", false).set(true);
    }

    void cleanup() {
        host_.close();
        fixture_.cleanup();
    }

    // ---- View models ----------------------------------------------------------------------

    void deleteNeedsArmingAndKeepsTheMemos() {
        cardEvent("e");
        storeMemo("e", "m1", "2026-03-01 / 09:00");
        CardViewModel card;
        card.setEventId("e");

        QVERIFY(!card.confirmDelete()); // not armed
        card.armDelete();
        QVERIFY(card.deleteArmed());
        card.disarmDelete();
        QVERIFY(!card.deleteArmed());
        QVERIFY(!card.confirmDelete());
        QVERIFY(eventStored("e"));

        log()->clear();
        card.armDelete();
        QVERIFY(card.confirmDelete());
        QVERIFY(!eventStored("e"));
        QVERIFY(!card.exists());
        QVERIFY(!card.deleteArmed());
        QCOMPARE(*log(), (std::vector<std::string>{"cloud delete e", "widgets reload"}));
        QCOMPARE(memoCount(), 1);
        QCOMPARE(MemoListModel().rowCount(), 0); // no event set, nothing listed
    }

    void pagesOfADeletedEventWriteNothing() {
        cardEvent("e", withEndDate);
        CardViewModel card;
        card.setEventId("e");
        EditEventTitleContentModel title;
        title.setEventId("e");
        EditEventStartDateModel dates;
        dates.setEventId("e");
        dates.setStartDate(2026, 4, 1);
        title.setTitleForEvent("Renamed");
        QVERIFY(card.exists() && title.canSave() && dates.differs());
        card.armDelete();

        realmDataFunc().deleteEventData("e");
        QTRY_VERIFY(!card.exists());
        QTRY_VERIFY(!title.exists());
        QTRY_VERIFY(!dates.exists());
        QVERIFY(!card.deleteArmed());
        QCOMPARE(card.title(), QString());
        QVERIFY(card.nextDates().isEmpty());

        log()->clear();
        QVERIFY(!card.setColor("colorForUserSelection01"));
        QVERIFY(!card.toggleStar());
        QVERIFY(!card.confirmDelete());
        QVERIFY(!title.canSave());
        QVERIFY(!title.save());
        QVERIFY(!dates.differs());
        QVERIFY(!dates.save());
        QVERIFY(log()->empty());
        QVERIFY(!eventStored("e"));
    }

    void titleAndContentWriteWhatChanged_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("content");
        QTest::addColumn<QStringList>("writes");
        const QStringList none;
        QTest::newRow("title only")
            << "Opera" << true << "Row 12, seat 7" << QStringList{"eventTitle"};
        QTest::newRow("content only") << "Concert" << true << "" << QStringList{"eventContent"};
        QTest::newRow("both, title first")
            << "Opera" << true << "Box 3" << QStringList{"eventTitle", "eventContent"};
        QTest::newRow("nothing changed") << "Concert" << true << "Row 12, seat 7" << none;
        QTest::newRow("empty title") << "" << false << "Box 3" << none;
    }

    void titleAndContentWriteWhatChanged() {
        QFETCH(QString, title);
        QFETCH(QString, content);
        QFETCH(bool, saved);
        QFETCH(QStringList, writes);
        cardEvent("e");
        EditEventTitleContentModel page;
        page.setEventId("e");
        QCOMPARE(page.titleForEvent(), QString("Concert"));
        QCOMPARE(page.contentForEvent(), QString("Row 12, seat 7"));
        FieldWriteRecorder recorder("e");

        page.setTitleForEvent(title);
        page.setContentForEvent(content);
        QCOMPARE(page.canSave(), saved);
        QCOMPARE(page.save(), saved);
        QCOMPARE(recorder.commits(), writes);
        if (saved) {
            QCOMPARE(QString::fromStdString(stored("e").eventTitle), title);
            QCOMPARE(QString::fromStdString(stored("e").eventContent), content);
            QCOMPARE(QString::fromStdString(publishedEvent("e").eventTitle), title);
        } else {
            QCOMPARE(stored("e").eventTitle, std::string("Concert"));
        }
    }

    void startDateWritesAllItsFields_data() {
        QTest::addColumn<bool>("endDate");
        QTest::addColumn<int>("commits");
        QTest::newRow("without end date") << false << 3;
        QTest::newRow("with end date") << true << 6;
    }

    void startDateWritesAllItsFields() {
        QFETCH(bool, endDate);
        QFETCH(int, commits);
        cardEvent("e", endDate ? withEndDate : std::function<void(eventObject&)>{});
        EditEventStartDateModel page;
        page.setEventId("e");
        QCOMPARE(page.hasEndDate(), endDate);
        QCOMPARE(page.startText(), QString("2026-03-20"));
        QCOMPARE(page.endText(), endDate ? QString("2030-06-01") : QString());
        QVERIFY(!page.differs());
        QVERIFY(!page.save());

        // Changing only the day still writes all three start fields (and the end ones).
        page.setStartDate(2026, 3, 21);
        QVERIFY(page.differs());
        FieldWriteRecorder recorder("e");
        log()->clear();
        QVERIFY(page.save());
        QCOMPARE(static_cast<int>(recorder.writes.size()), commits);
        QCOMPARE(recorder.writes[2], std::string("eventStartDateDay"));
        QCOMPARE(countOf(log(), "widgets reload"), long(commits));
        QCOMPARE(stored("e").eventStartDateDay, 21);
    }

    // A date changed on the card leaves the filed reminders alone; the timeline's next
    // appearance files them for the new date. Filed in a real reminders file here.
    void aCardDateChangeReachesTheRemindersWhenTheTimelineAppears() {
        auto center = std::make_shared<LinuxNotificationCenter>(
            fixture_.storage->dataHome() / "reminders.sqlite", nullptr);
        setNotificationCenter(center);
        cardEvent("e", [](eventObject& e) {
            e.eventNotiOrNot = true;
            e.eventNotiType = 4; // on the day
            e.eventNotiDateDayHour = 9;
        });
        auto filed = [&] {
            std::vector<NotificationRequest> pending;
            center->pending([&](std::vector<NotificationRequest> p) { pending = std::move(p); });
            return pending;
        };
        const double toTheTwentieth = 9 * 86400 + 23 * 3600; // 10 March 10:00 to 20 March 09:00
        // The date comes back every year: the plan holds the coming ones, the first on the 20th.
        TimelineActions().timelineAppeared();
        QCOMPARE(filed().size(), notiFunc::kMaximumRequests);
        QCOMPARE(filed()[0].delaySeconds, toTheTwentieth);

        EditEventStartDateModel dates;
        dates.setEventId("e");
        dates.setStartDate(2026, 3, 25);
        QVERIFY(dates.save());
        QCOMPARE(filed()[0].delaySeconds, toTheTwentieth);

        TimelineActions().timelineAppeared();
        QCOMPARE(filed().size(), notiFunc::kMaximumRequests);
        QCOMPARE(filed()[0].delaySeconds, toTheTwentieth + 5 * 86400); // before the clock change
        QVERIFY(QString::fromStdString(filed()[0].identifier).startsWith("N-e@@"));
    }

    void startDatePickersKeepTheirRange() {
        cardEvent("e", withEndDate);
        EditEventStartDateModel page;
        page.setEventId("e");
        // The end can't go before the start: a later start carries the end along.
        page.setStartDate(2031, 1, 31);
        QCOMPARE(page.endText(), QString("2031-01-31"));
        page.setEndDate(2030, 1, 1);
        QCOMPARE(page.endText(), QString("2031-01-31"));
        page.setEndDate(3001, 1, 1);
        QCOMPARE(page.endText(), QString("3000-12-31"));
        // A day past the month's end is the month's last day.
        page.setStartDate(2028, 2, 31);
        QCOMPARE(page.startText(), QString("2028-02-29"));
        QCOMPARE(page.daysInMonth(2027, 2), 28);
        page.reset();
        QCOMPARE(page.startText(), QString("2026-03-20"));
        QCOMPARE(page.endText(), QString("2030-06-01"));
        QVERIFY(!page.differs());

        // Stored numbers that name no real day open at the day they carry over to, and count as
        // unchanged until a picker moves.
        cardEvent("odd", [](eventObject& e) {
            e.eventStartDateMonth = 2;
            e.eventStartDateDay = 30;
        });
        page.setEventId("odd");
        QCOMPARE(page.startText(), QString("2026-03-02"));
        QVERIFY(!page.differs());
    }

    void nextDatesOfTheCard() {
        cardEvent("weekly", [](eventObject& e) {
            e.eventRepeatOrNot = true;
            e.eventType = 2;
            e.eventStartDateMonth = 1;
            e.eventStartDateDay = 1;
            e.eventDateWhenEveryWeek = encodeDayListArchive({5, 2});
        });
        CardViewModel card;
        card.setEventId("weekly");
        // Tuesday 10 March: today (Tue), then Friday, then next Tuesday.
        QCOMPARE(card.nextDates(), (QStringList{"2026-03-10", "2026-03-13", "2026-03-17"}));
        card.setEventId("oneOff");
        cardEvent("oneOff");
        QTRY_VERIFY(card.exists());
        QVERIFY(card.nextDates().isEmpty());
    }

    void sharePageLooksTheGroupUp() {
        cardEvent("e", [](eventObject& e) {
            e.eventShareOrNot = true;
            e.eventShareGroupId = "G1";
        });
        EditShareSettingModel page;
        page.setEventId("e");
        QVERIFY(page.exists() && page.shareOn());
        QVERIFY(!page.groupFound());
        shareGroup group;
        group.shareGroupId = "G1";
        group.title = "Family";
        auto s = Store::open();
        s.write([&] { s.add(group); });
        QTRY_VERIFY(page.groupFound());
        QCOMPARE(page.groupTitle(), QString("Family"));
    }

    void memoAddAndEdit() {
        cardEvent("e");
        MemoEditorModel form;
        form.setEventId("e");
        form.startAdd();
        QVERIFY(!form.editMode());
        QCOMPARE(form.dateText(), QString("2026-03-10 / 10:00"));
        QVERIFY(!form.canSave()); // no title
        QVERIFY(!form.save());
        QCOMPARE(memoCount(), 0);

        form.setTitleForEventMemo("Tickets");
        form.setContentForEventMemo("At the box office");
        form.setDate(2026, 3, 18, 19, 45);
        log()->clear();
        QVERIFY(form.save());
        const auto memoId = form.memoId();
        QVERIFY(QUuid::fromString(memoId).isNull() == false);
        QCOMPARE(memoId, memoId.toUpper());
        auto memo = Store::open().object<memoDataForNotiObject>(memoId.toStdString());
        QVERIFY(memo);
        QCOMPARE(memo->eventId, std::string("e"));
        QCOMPARE(memo->timeStamp, std::string("2026-03-18 / 19:45"));
        // Memos go to the cloud but not to the widgets.
        QCOMPARE(*log(), std::vector<std::string>{"cloud memo " + memoId.toStdString()});

        // Edit: blocked while unchanged, then any of the three fields opens the save.
        MemoEditorModel edit;
        QVERIFY(!edit.startEdit("unknown"));
        QVERIFY(edit.startEdit(memoId));
        QVERIFY(edit.editMode());
        QCOMPARE(edit.eventId(), QString("e"));
        QCOMPARE(edit.titleForEventMemo(), QString("Tickets"));
        QCOMPARE(edit.dateText(), QString("2026-03-18 / 19:45"));
        QVERIFY(!edit.canSave());
        QVERIFY(!edit.save());
        edit.setDate(2026, 3, 18, 19, 50);
        QVERIFY(edit.canSave());
        edit.setDate(2026, 3, 18, 19, 45);
        QVERIFY(!edit.canSave());
        edit.setContentForEventMemo("Collected");
        QVERIFY(edit.save());
        QCOMPARE(edit.memoId(), memoId);
        QCOMPARE(memoCount(), 1);
        QCOMPARE(Store::open().object<memoDataForNotiObject>(memoId.toStdString())->content,
                 std::string("Collected"));
        QVERIFY(!edit.canSave()); // saved values are the new reference
    }

    void memoStampsAreRead() {
        QCOMPARE(memoStampDate("2026-03-18 / 19:45"),
                 std::optional<Date>(localDate(2026, 3, 18, 19, 45)));
        QCOMPARE(memoStampDate("2026-03-18 / 19:45:10"), std::optional<Date>());
        QCOMPARE(memoStampDate("bgTaskInfo"), std::optional<Date>());
    }

    // ---- Pages ----------------------------------------------------------------------------

    void cardPageWalk() {
        cardEvent("e", withEndDate);
        auto* page = show("CardViewForEventObject.qml", {{"eventId", "e"}});
        QVERIFY(page);
        QCOMPARE(findChildItem(page, "rowTitle")->property("text").toString(), QString("Concert"));
        QVERIFY(findChildItem(page, "nextDatesSection")->isVisible());

        const int taps = haptics();
        click(findChildItem(page, "colorButton2"));
        QCOMPARE(stored("e").eventColorString, std::string("colorForUserSelection02"));
        QTRY_COMPARE(publishedEvent("e").eventColorString, "colorForUserSelection02");
        click(findChildItem(page, "colorButton0"));
        QCOMPARE(stored("e").eventColorString, std::string());
        click(findChildItem(page, "starButton"));
        QVERIFY(stored("e").eventStarOrNot);
        QCOMPARE(haptics(), taps + 3);

        click(findChildItem(page, "trashButton"));
        QTRY_VERIFY(findChildItem(page, "deleteConfirmButton")->isVisible());
        QVERIFY(!findChildItem(page, "trashButton")->isVisible());
        click(findChildItem(page, "deleteCancelButton"));
        QTRY_VERIFY(findChildItem(page, "trashButton")->isVisible());
        QVERIFY(eventStored("e"));

        // Title page: an emptied title can't be saved; a new one is.
        click(findChildItem(page, "titleContentRow"));
        QVERIFY(reached(3));
        auto* titlePage = top();
        QCOMPARE(titlePage->objectName(), QString("editEventTitleContentPage"));
        retype(findChildItem(titlePage, "titleField"), "");
        click(findChildItem(titlePage, "saveButton"));
        QCOMPARE(depth(), 3);
        QCOMPARE(stored("e").eventTitle, std::string("Concert"));
        retype(findChildItem(titlePage, "titleField"), "Opera");
        click(findChildItem(titlePage, "saveButton"));
        QVERIFY(reached(2));
        QCOMPARE(stored("e").eventTitle, std::string("Opera"));
        QTRY_COMPARE(findChildItem(page, "rowTitle")->property("text").toString(),
                     QString("Opera"));

        // Start date page: pick the 25th, save; the widgets see it.
        click(findChildItem(page, "startDateRow"));
        QVERIFY(reached(3));
        auto* datePage = top();
        QVERIFY(findChildItem(datePage, "endDateRow")->isVisible());
        QCOMPARE(findChildItem(datePage, "saveButton")->property("symbol").toString(),
                 QString("keyboard.badge.ellipsis"));
        click(findChildItem(findChildItem(datePage, "startDateRow"), "dateCell_25"));
        QCOMPARE(findChildItem(datePage, "saveButton")->property("symbol").toString(),
                 QString("checkmark"));
        click(findChildItem(datePage, "saveButton"));
        QVERIFY(reached(2));
        QCOMPARE(stored("e").eventStartDateDay, 25);
        QCOMPARE(publishedEvent("e").eventStartDateDay, 25);

        // The share page and the pages of the rule editors open with the event.
        for (const char* row : {"shareRow", "repeatRow", "notiRow"}) {
            click(findChildItem(page, row));
            QVERIFY(reached(3));
            QCOMPARE(top()->property("eventId").toString(), QString("e"));
            popTop();
            QVERIFY(reached(2));
        }

        click(findChildItem(page, "trashButton"));
        QTRY_VERIFY(findChildItem(page, "deleteConfirmButton")->isVisible());
        click(findChildItem(page, "deleteConfirmButton"));
        QVERIFY(reached(1));
        QVERIFY(!eventStored("e"));
    }

    void cardOfAnEventDeletedElsewhereShowsTheEmptyRow() {
        cardEvent("e");
        auto* page = show("CardViewForEventObject.qml", {{"eventId", "e"}});
        QVERIFY(page);
        click(findChildItem(page, "startDateRow"));
        QVERIFY(reached(3));
        QVERIFY(findChildItem(top(), "startDateRow")->isVisible());
        QVERIFY(!findChildItem(top(), "endDateRow")->isVisible());
        realmDataFunc().deleteEventData("e");
        // The page opened from the card closes; the card shows its empty row.
        QVERIFY(reached(2));
        QTRY_VERIFY(findChildItem(page, "goneText")->isVisible());
        QVERIFY(!findChildItem(page, "starDeleteRow")->isVisible());
        QVERIFY(!findChildItem(page, "editTitleContentToolbarButton")->isVisible());
    }

    void memoPageWalk() {
        cardEvent("e");
        storeMemo("e", "old", "2026-03-01 / 08:00");
        storeMemo("other", "foreign", "2026-03-03 / 08:00");
        storeMemo("e", "new", "2026-03-09 / 18:30");
        auto* page = show("MemoForCardViewPage.qml", {{"eventId", "e"}});
        QVERIFY(page);
        auto* list = page->property("memoItems").value<MemoListModel*>();
        QVERIFY(list);
        QCOMPARE(list->memoIds(), (QStringList{"old", "new"}));
        QCOMPARE(findChildItem(page, "orderButton")->property("symbol").toString(),
                 QString("arrow.up.to.line"));
        click(findChildItem(page, "orderButton"));
        QCOMPARE(list->memoIds(), (QStringList{"new", "old"}));
        QVERIFY(Setting<bool>("UI_User_AscendingForListAtMemoForCardViewPage", false).get());
        QCOMPARE(findChildItem(page, "orderButton")->property("symbol").toString(),
                 QString("arrow.down.to.line"));

        // Add through the sheet.
        auto* sheet = page->property("addSheet").value<QObject*>();
        click(findChildItem(page, "plusButton"));
        QTRY_VERIFY(sheet->property("opened").toBool());
        auto* sheetContent = sheet->property("contentItem").value<QQuickItem*>();
        retype(findChildItem(sheetContent, "memoTitleField"), "Tickets");
        const int taps = haptics();
        click(findChildItem(sheetContent, "saveButton"));
        QTRY_VERIFY(!sheet->property("visible").toBool());
        QCOMPARE(haptics(), taps + 1);
        QCOMPARE(memoCount(), 4);
        QTRY_COMPARE(list->count(), 3);
        // The sheet opens empty again.
        click(findChildItem(page, "plusButton"));
        QTRY_VERIFY(sheet->property("opened").toBool());
        QCOMPARE(findChildItem(sheetContent, "memoTitleField")->property("text").toString(),
                 QString());
        QCOMPARE(findChildItem(sheetContent, "saveButton")->property("symbol").toString(),
                 QString("keyboard.badge.ellipsis"));
        // Newest first: the memo stamped now heads the list.
        QCOMPARE(list->data(list->index(0), MemoListModel::TitleRole).toString(),
                 QString("Tickets"));
    }

    void memoSwipeActions() {
        cardEvent("e", [](eventObject& e) { e.eventHaveMemoOrNot = true; });
        storeMemo("e", "m1", "2026-03-01 / 08:00");
        storeMemo("e", "m2", "2026-03-02 / 08:00");
        auto* page = show("MemoForCardViewPage.qml", {{"eventId", "e"}});
        QVERIFY(page);
        auto* list = page->property("memoItems").value<MemoListModel*>();

        // A drag to the left, as a thumb does, uncovers the card's actions.
        auto swipeOpen = [&](QQuickItem* card) {
            QVERIFY(card);
            QPoint at = card->mapToScene(QPointF(card->width() - 30, card->height() / 2)).toPoint();
            QTest::mouseMove(host_.window(), at);
            QTest::mousePress(host_.window(), Qt::LeftButton, {}, at);
            for (int step = 0; step < 12; ++step) {
                at.rx() -= 16;
                QTest::mouseMove(host_.window(), at, 16);
            }
            QTest::mouseRelease(host_.window(), Qt::LeftButton, {}, at, 16);
            QTRY_COMPARE(card->property("swipe").value<QObject*>()->property("position").toReal(),
                         -1.0);
        };

        // Edit in the centred popup: unchanged is blocked, a new title is saved in place.
        auto* first = findChildItem(page, "memo0");
        swipeOpen(first);
        click(findChildItem(first, "editAction"));
        auto* popup = page->property("editPopup").value<QObject*>();
        QTRY_VERIFY(popup->property("opened").toBool());
        auto* form = popup->property("contentItem").value<QQuickItem*>();
        click(findChildItem(form, "saveButton"));
        QVERIFY(popup->property("visible").toBool());
        retype(findChildItem(form, "memoTitleField"), "First");
        click(findChildItem(form, "saveButton"));
        QTRY_VERIFY(!popup->property("visible").toBool());
        QCOMPARE(Store::open().object<memoDataForNotiObject>("m1")->title, std::string("First"));
        QCOMPARE(memoCount(), 2);

        // Delete without confirm; the event keeps its memo mark.
        QTest::qWait(300); // the rebuilt list's cards replace the old ones
        auto* second = findChildItem(page, "memo1");
        swipeOpen(second);
        log()->clear();
        click(findChildItem(second, "deleteAction"));
        QTRY_COMPARE(list->count(), 1);
        QCOMPARE(*log(), std::vector<std::string>{"cloud memo delete m2"});
        QCOMPARE(memoCount(), 1);
        QVERIFY(!Store::open().object<memoDataForNotiObject>("m2"));
        QVERIFY(stored("e").eventHaveMemoOrNot);
        QVERIFY(!findChildItem(page, "emptyText")->isVisible());
    }
};

QTEST_MAIN(EditingCardTest)
#include "test_editing_card.moc"
