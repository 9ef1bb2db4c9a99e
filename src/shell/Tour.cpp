#include "shell/Tour.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <algorithm>
#include <memory>

namespace tidemark {

const QList<TourStop>& tourStops() {
    static const QList<TourStop> stops = {
        {"CalendarPageView", "", {"tab_summaryView"}, "calendarPageView"},
        {"EventListPage", "", {"tab_eventListView"}, "eventListPage"},
        {"SettingView", "", {"tab_moreView"}, "settingView"},
        {"FilterSettingPopupForMainView",
         "",
         {"tab_eventListView", "filterButton"},
         "filterSettingPopupForMainView"},
        {"DisplayModeSettingPageAtMainView",
         "",
         {"tab_summaryView", "displayModeButton"},
         "displayModeSettingPageAtMainView"},
        {"TimelineView", "", {"tab_eventListView", "timelineButton"}, "timelineView"},
        {"ChangeFilterContentPageForTimelineView",
         "",
         {"tab_eventListView", "timelineButton", "kindMenuButton", "kindMenuFilters"},
         "changeFilterContentPageForTimelineView"},
        {"NextFewDaysEventView",
         "",
         {"tab_eventListView", "timelineButton", "nextFewDaysLink"},
         "nextFewDaysEventView"},
        {"TimelineEventSchedulePage",
         "",
         {"tab_eventListView", "timelineButton", "scheduleButton"},
         "timelineEventSchedulePage",
         true},
        {"SummaryView",
         "",
         {"tab_eventListView", "timelineButton", "scheduleButton"},
         "summaryView",
         true},
        {"VerticalStackedCards",
         "",
         {"tab_eventListView", "timelineButton", "stackViewsButton", "verticalStackedCardsItem"},
         "verticalStackedCards"},
        {"BrandNewVerticalCardView",
         "",
         {"tab_eventListView", "timelineButton", "stackViewsButton",
          "brandNewVerticalCardViewItem"},
         "brandNewVerticalCardView"},
        {"StackCardView",
         "",
         {"tab_eventListView", "timelineButton", "stackViewsButton", "stackCardViewItem"},
         "stackCardView"},
        {"EventView",
         "",
         {"tab_eventListView", "timelineButton", "stackViewsButton", "eventViewItem"},
         "eventView"},
        {"SelectOneEventForEventView",
         "",
         {"tab_eventListView", "timelineButton", "stackViewsButton", "eventViewItem",
          "chooseEventButton"},
         "selectOneEventForEventView"},
        {"ShareEventImageMenu",
         "",
         {"tab_eventListView", "shareButton"},
         "shareEventImageMenu",
         true},
        {"AddNewEventPage", "add", {"tab_addNewEvent"}, "addNewEventPage"},
        {"RepeatEventSettingPage",
         "",
         {"tab_addNewEvent", "repeatSwitch", "repeatRow"},
         "repeatEventSettingPage"},
        {"NotiSettingPage", "", {"tab_addNewEvent", "notiSwitch", "notiRow"}, "notiSettingPage"},
        {"AddNewEventPage", "edit", {"tab_eventListView", "editButton"}, "addNewEventPage", true},
        {"CardViewForEventObject",
         "",
         {"tab_eventListView", "title"},
         "cardViewForEventObject",
         true},
        {"EditEventTitleContentPage",
         "",
         {"tab_eventListView", "title", "titleContentRow"},
         "editEventTitleContentPage",
         true},
        {"EditEventStartDatePage",
         "",
         {"tab_eventListView", "title", "startDateRow"},
         "editEventStartDatePage",
         true},
        {"EditRepeatEventSettingPage",
         "",
         {"tab_eventListView", "title", "repeatRow"},
         "editRepeatEventSettingPage",
         true},
        {"EditNotiSettingPage",
         "",
         {"tab_eventListView", "title", "notiRow"},
         "editNotiSettingPage",
         true},
        {"EditShareSettingPage",
         "",
         {"tab_eventListView", "title", "shareRow"},
         "editShareSettingPage",
         true},
        {"MemoForCardViewPage",
         "",
         {"tab_eventListView", "memoButton"},
         "memoForCardViewPage",
         true},
        {"MemoForCardViewAddMemoHalfPage",
         "",
         {"tab_eventListView", "memoButton", "plusButton"},
         "memoForCardViewAddMemoHalfPage",
         true},
        {"CenterPopupForAddOrEditMemoView",
         "",
         {"tab_eventListView", "memoButton", "swipe:memo0", "editAction"},
         "centerPopupForAddOrEditMemoView",
         true},
        {"SettingViewSubViewForNotiSetting",
         "",
         {"tab_moreView", "remindersRow"},
         "settingViewSubViewForNotiSetting"},
        {"BottomPopupForAppearences",
         "",
         {"tab_moreView", "appearanceRow"},
         "bottomPopupForAppearences"},
        {"PopupForBackgroundImageSetting",
         "",
         {"tab_moreView", "backgroundRow"},
         "popupForBackgroundImageSetting"},
        {"PopupForIcloudSetting", "", {"tab_moreView", "cloudRow"}, "popupForIcloudSetting"},
        {"IcloudSettingSubPage",
         "",
         {"tab_moreView", "cloudRow", "cloudCodeRow"},
         "icloudSettingSubPage"},
        {"HelpSubPage", "", {"tab_moreView", "helpRow"}, "helpSubPage"},
        {"ShareSettingSubPage", "", {"tab_moreView", "shareSettingRow"}, "shareSettingSubPage"},
        {"AboutSubPage", "", {"tab_moreView", "aboutRow"}, "aboutSubPage"},
        {"CalendarExportPage", "", {"tab_moreView", "exportCalendarRow"}, "calendarExportPage"},
        {"CalendarImportPage", "", {"tab_moreView", "importCalendarRow"}, "calendarImportPage"},
        {"SupportMeSubPage", "", {"tab_moreView", "supportRow"}, "supportMeSubPage"},
    };
    return stops;
}

QString qmlTypeName(const QObject* object) {
    QString name = QString::fromLatin1(object->metaObject()->className());
    for (const auto& marker : {QStringLiteral("_QMLTYPE_"), QStringLiteral("_QML_")}) {
        const auto at = name.indexOf(marker);
        if (at > 0) {
            return name.left(at);
        }
    }
    return name;
}

namespace {

// The item a popup draws into, or the item itself.
QQuickItem* visualOf(QObject* object) {
    if (auto* item = qobject_cast<QQuickItem*>(object)) {
        return item;
    }
    return object ? object->property("contentItem").value<QQuickItem*>() : nullptr;
}

// The middle of an item in window coordinates.
QPointF middleOf(QQuickItem* item) {
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
}

bool insideWindow(QQuickWindow* window, QPointF point) {
    return point.x() >= 0 && point.y() >= 0 && point.x() < window->width() &&
           point.y() < window->height();
}

// Scrolls the views around an item, innermost first, until its middle is inside each of them,
// as a thumb would before tapping it.
void bringIntoView(QQuickItem* item) {
    for (auto* view = item->parentItem(); view; view = view->parentItem()) {
        if (!view->inherits("QQuickFlickable")) {
            continue;
        }
        const qreal y = item->mapToItem(view, QPointF(0, item->height() / 2)).y();
        if (y >= 0 && y < view->height()) {
            continue;
        }
        auto* content = view->property("contentItem").value<QQuickItem*>();
        const qreal middle = item->mapToItem(content, QPointF(0, item->height() / 2)).y();
        const qreal top = view->property("originY").toReal();
        const qreal last = top + view->property("contentHeight").toReal() - view->height();
        view->setProperty("contentY",
                          std::clamp(middle - view->height() / 2, top, std::max(top, last)));
    }
}

bool isShown(QQuickWindow* window, QObject* object, bool onScreen = true) {
    if (!object->property("visible").toBool()) {
        return false;
    }
    if (object->inherits("QQuickPopup") && !object->property("opened").toBool()) {
        return false;
    }
    auto* item = visualOf(object);
    if (!item || !item->isVisible() || item->width() <= 0 || item->height() <= 0) {
        return false;
    }
    return !onScreen || insideWindow(window, middleOf(item));
}

// Searches the object tree (popups and handlers are QObject children) and the visual tree
// (items a Repeater or a view makes have a visual parent only).
QObject* findIn(QQuickWindow* window, QObject* root, const QString& name, bool onScreen,
                QSet<QObject*>& seen) {
    if (!root || seen.contains(root)) {
        return nullptr;
    }
    seen.insert(root);
    if (root->objectName() == name && isShown(window, root, onScreen)) {
        return root;
    }
    for (auto* child : root->children()) {
        if (auto* found = findIn(window, child, name, onScreen, seen)) {
            return found;
        }
    }
    if (auto* item = qobject_cast<QQuickItem*>(root)) {
        for (auto* child : item->childItems()) {
            if (auto* found = findIn(window, child, name, onScreen, seen)) {
                return found;
            }
        }
    }
    return nullptr;
}

void sendMouse(QQuickWindow* window, QEvent::Type type, QPointF at, ulong time) {
    const Qt::MouseButtons buttons =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(Qt::LeftButton);
    QMouseEvent event(type, at, at, window->mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons,
                      Qt::NoModifier);
    event.setTimestamp(time);
    QGuiApplication::sendEvent(window, &event);
}

ulong eventClock() {
    static ulong clock = 1000;
    return clock += 16;
}

void tap(QQuickWindow* window, QQuickItem* item) {
    const QPointF at = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    sendMouse(window, QEvent::MouseMove, at, eventClock());
    sendMouse(window, QEvent::MouseButtonPress, at, eventClock());
    sendMouse(window, QEvent::MouseButtonRelease, at, eventClock());
}

void swipeLeft(QQuickWindow* window, QQuickItem* item) {
    QPointF at = item->mapToScene(QPointF(item->width() - 30, item->height() / 2));
    sendMouse(window, QEvent::MouseMove, at, eventClock());
    sendMouse(window, QEvent::MouseButtonPress, at, eventClock());
    for (int step = 0; step < 12; ++step) {
        at.rx() -= 16;
        sendMouse(window, QEvent::MouseMove, at, eventClock());
    }
    sendMouse(window, QEvent::MouseButtonRelease, at, eventClock());
}

struct Walk {
    QPointer<QQuickWindow> window;
    TourStop stop;
    std::function<void(QObject*, const QString&)> done;
    int patienceMs;
    int next = 0;
    int waitedMs = 0;
    /// Where the item to tap was at the last poll: a tap waits until it stands still, so that a
    /// page still sliding in (slow on a busy machine) isn't tapped beside its target.
    QPointer<QQuickItem> lastItem = nullptr;
    QRectF lastRect = {};
};

constexpr int kPollMs = 50;
// Time for a tap's page or popup to open and its first fills to land.
constexpr int kSettleMs = 250;

void step(const std::shared_ptr<Walk>& walk) {
    if (!walk->window) {
        return;
    }
    const bool finished = walk->next >= walk->stop.taps.size();
    const QString wanted = finished ? walk->stop.target : walk->stop.taps.at(walk->next);
    const bool swipe = wanted.startsWith(QStringLiteral("swipe:"));
    const QString name = swipe ? wanted.mid(6) : wanted;
    // What is tapped may lie further down a scrolling page; the target must be on screen.
    QObject* found = findShownObject(walk->window, name, finished);
    if (!found) {
        if (walk->waitedMs >= walk->patienceMs) {
            walk->done(nullptr,
                       QStringLiteral("%1: nothing named %2 showed up").arg(walk->stop.page, name));
            return;
        }
        walk->waitedMs += kPollMs;
        QTimer::singleShot(kPollMs, walk->window, [walk] { step(walk); });
        return;
    }
    if (finished) {
        if (qmlTypeName(found) != walk->stop.page) {
            walk->done(
                nullptr,
                QStringLiteral("%1: %2 is a %3").arg(walk->stop.page, name, qmlTypeName(found)));
            return;
        }
        walk->done(found, {});
        return;
    }
    auto* item = visualOf(found);
    bringIntoView(item);
    const QRectF rect = item->mapRectToScene(item->boundingRect());
    if ((item != walk->lastItem || rect != walk->lastRect) && walk->waitedMs < walk->patienceMs) {
        walk->lastItem = item;
        walk->lastRect = rect;
        walk->waitedMs += kPollMs;
        QTimer::singleShot(kPollMs, walk->window, [walk] { step(walk); });
        return;
    }
    swipe ? swipeLeft(walk->window, item) : tap(walk->window, item);
    ++walk->next;
    walk->waitedMs = 0;
    walk->lastItem = nullptr;
    QTimer::singleShot(kSettleMs, walk->window, [walk] { step(walk); });
}

} // namespace

QObject* findShownObject(QQuickWindow* window, const QString& name, bool onScreen) {
    QSet<QObject*> seen;
    if (auto* found = findIn(window, window->contentItem(), name, onScreen, seen)) {
        return found;
    }
    // Popups whose declaring object isn't under the content item still draw into the overlay.
    for (auto* object : window->findChildren<QObject*>(name)) {
        if (isShown(window, object, onScreen)) {
            return object;
        }
    }
    return nullptr;
}

void returnToMainScreen(QQuickWindow* window) {
    for (auto* object : window->findChildren<QObject*>()) {
        if (object->inherits("QQuickPopup") && object->property("opened").toBool()) {
            QMetaObject::invokeMethod(object, "close");
        }
    }
    QMetaObject::invokeMethod(window, "returnToMainScreen");
}

void walkTourStop(QQuickWindow* window, const TourStop& stop,
                  std::function<void(QObject*, const QString&)> done, int patienceMs) {
    returnToMainScreen(window);
    auto walk = std::make_shared<Walk>(Walk{window, stop, std::move(done), patienceMs});
    QTimer::singleShot(kSettleMs, window, [walk] { step(walk); });
}

} // namespace tidemark
