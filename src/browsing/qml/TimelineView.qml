import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Browsing
import TideMark.Components

// The timeline: the kind menu, the filter button and the rows of the filtered list. Each time it
// comes on screen it clears the pending reminders and plans them afresh. The stack button leads
// to the card stacks and the day view. A row's buttons open their pages on the stack the timeline
// is on (and are emitted as requests too), and each row opens its event's schedule page. The link
// above the rows opens the next few days.
Page {
    id: page
    objectName: "timelineView"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias rows: rowsList.listModel

    signal nextFewDaysRequested()
    signal memoRequested(string eventId)
    signal editRequested(string eventId)
    signal shareRequested(string eventId)
    signal cardRequested(string eventId)
    signal scheduleRequested(string eventId)

    readonly property ThemeColors colors: Theme.colors(page.dark)
    TimelineActions { id: actions }

    function appeared() { actions.timelineAppeared() }
    Component.onCompleted: if (visible) appeared()
    onVisibleChanged: if (visible) appeared()

    /// Pushes a page of the window's folder onto the timeline's stack, if it is on one.
    function push(nextPage, properties) {
        if (page.StackView.view)
            page.StackView.view.push(nextPage, properties)
    }
    onMemoRequested: id => push(memoForCardViewPage, { eventId: id })
    onCardRequested: id => push(cardViewForEventObject, { eventId: id })
    onScheduleRequested: id => push(timelineEventSchedulePage, { eventId: id })
    onNextFewDaysRequested: push(nextFewDaysEventView, {})
    onShareRequested: id => {
        shareMenu.eventId = id
        shareMenu.open()
    }
    onEditRequested: id => push(addNewEventPage, { editOrAddNewEventCheckValue: true, eventId: id,
                                                         resetAllDataWhenEnterFromCardView: true })

    /// Opens the filter page on the enclosing StackView, or the filter popup without one.
    function openFilters() {
        if (page.StackView.view) {
            page.StackView.view.push(changeFilterContentPageForTimelineView)
        } else {
            filterPopup.open()
        }
    }

    background: PageBackground {}

    header: ToolBar {
        Material.elevation: 0
        background: null
        implicitHeight: 56
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacing
            anchors.rightMargin: Theme.spacing
            spacing: Theme.spacingSmall
            RowButton {
                objectName: "backButton"
                visible: page.StackView.view !== null && page.StackView.index > 0
                symbol: "chevron.left"
                tint: page.colors.primaryText
                onClicked: page.StackView.view.pop()
            }
            KindFilterButton {
                objectName: "kindMenuButton"
                title: rowsList.listModel.kindMenuTitle
                offersFilterPage: true
                onFilterPageRequested: page.openFilters()
            }
            Item { Layout.fillWidth: true }
            RowButton {
                objectName: "stackViewsButton"
                symbol: "square.stack.3d.up"
                tint: page.colors.primaryText
                Accessible.name: qsTrId("stackViewsMenuTitle")
                onClicked: stackViewsMenu.open()
                Menu {
                    id: stackViewsMenu
                    objectName: "stackViewsMenu"
                    y: parent.height
                    MenuItem {
                        objectName: "verticalStackedCardsItem"
                        text: qsTrId("verticalStackedCardsTitle")
                        onTriggered: page.push(verticalStackedCards, {})
                    }
                    MenuItem {
                        objectName: "brandNewVerticalCardViewItem"
                        text: qsTrId("brandNewVerticalCardViewTitle")
                        onTriggered: page.push(brandNewVerticalCardView, {})
                    }
                    MenuItem {
                        objectName: "stackCardViewItem"
                        text: qsTrId("stackCardViewTitle")
                        onTriggered: page.push(stackCardView, {})
                    }
                    MenuItem {
                        objectName: "eventViewItem"
                        text: qsTrId("eventViewTitle")
                        onTriggered: page.push(eventView, {})
                    }
                }
            }
            RowButton {
                objectName: "filterButton"
                symbol: "line.3.horizontal.decrease.circle"
                tint: page.colors.primaryText
                onClicked: filterPopup.open()
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ItemDelegate {
            objectName: "nextFewDaysLink"
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            Layout.topMargin: 4
            implicitHeight: 56
            onClicked: page.nextFewDaysRequested()
            background: Rectangle {
                radius: Theme.radiusLarge
                color: Theme.named("tabBarIconColorForSelected", page.dark)
            }
            contentItem: RowLayout {
                spacing: 10
                Label {
                    text: Symbols.glyph("calendar.badge.clock")
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontHeadline
                    color: page.colors.selectedText
                }
                Label {
                    text: qsTrId("nextFewDaysEventViewNaviLinkStringBigTitleAtBrandNewMainView")
                    font.pixelSize: Theme.fontBodyLarge
                    font.weight: Font.DemiBold
                    color: page.colors.selectedText
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    text: Symbols.glyph("chevron.right")
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontHeadline
                    color: page.colors.selectedText
                }
            }
        }

        EventRowsList {
            id: rowsList
            objectName: "timelineRows"
            Layout.fillWidth: true
            Layout.fillHeight: true
            onMemoRequested: id => page.memoRequested(id)
            onEditRequested: id => page.editRequested(id)
            onShareRequested: id => page.shareRequested(id)
            onCardRequested: id => page.cardRequested(id)
            offersSchedule: true
            onScheduleRequested: id => page.scheduleRequested(id)
        }
    }

    FilterSettingPopupForMainView { id: filterPopup; dark: page.dark }
    ShareEventImageMenu { id: shareMenu; dark: page.dark }

    // The pages and popups this one opens.
    Component { id: changeFilterContentPageForTimelineView; ChangeFilterContentPageForTimelineView {} }
    Component { id: memoForCardViewPage; MemoForCardViewPage {} }
    Component { id: cardViewForEventObject; CardViewForEventObject {} }
    Component { id: timelineEventSchedulePage; TimelineEventSchedulePage {} }
    Component { id: nextFewDaysEventView; NextFewDaysEventView {} }
    Component { id: addNewEventPage; AddNewEventPage {} }
    Component { id: verticalStackedCards; VerticalStackedCards {} }
    Component { id: brandNewVerticalCardView; BrandNewVerticalCardView {} }
    Component { id: stackCardView; StackCardView {} }
    Component { id: eventView; EventView {} }
}
