import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark
import TideMark.Components

// The main screen: the page of the selected tab above a bar of four items of its own. The
// selected tab survives a restart; the plus item opens the new-event form and never becomes the
// selected tab. A page is built the first time its tab is shown and kept after that.
Item {
    id: mainView

    property bool darkScheme: false
    property var popups: null

    /// Asks the window to show a short note at the top.
    signal noteRequested(string text)

    readonly property string currentTab: currentTabSetting.value
    readonly property string shownTab: currentTab

    AppStorage {
        id: currentTabSetting
        key: "APP_FUNC_newTabBarTabValue"
        defaultValue: "summaryView"
    }

    AppStorage {
        id: tabViewSelection
        key: "FUNC_APP_tabViewSelection"
        defaultValue: 0
    }

    TimelineActions { id: appearance }

    function selectTab(tab) {
        Haptics.impact()
        tabSwitch.restart()
        currentTabSetting.value = tab
    }

    // Pushes a page (one of the Components below, or one that the settings tab hands over) onto
    // the window's stack; the main screen is its bottom page.
    function openPage(nextPage, properties) {
        if (mainView.StackView.view)
            mainView.StackView.view.push(nextPage, properties || {})
    }

    function openNewEventForm() {
        Haptics.impact()
        openPage(addNewEventPage, { editOrAddNewEventCheckValue: false, eventId: "",
                                          resetAllDataWhenEnterFromCardView: true })
    }

    // What the rows of the calendar and list pages ask for.
    function openEditForm(eventId) {
        openPage(addNewEventPage, { editOrAddNewEventCheckValue: true, eventId: eventId,
                                          resetAllDataWhenEnterFromCardView: true })
    }
    function openCard(eventId) {
        openPage(cardViewForEventObject, { eventId: eventId })
    }
    function openMemos(eventId) {
        openPage(memoForCardViewPage, { eventId: eventId })
    }

    function openShareMenu(eventId) {
        shareMenu.eventId = eventId
        shareMenu.open()
    }

    function openTimeline() {
        Haptics.impact()
        openPage(timelineView, {})
    }
    function openDisplayModePage() {
        Haptics.impact()
        openPage(displayModeSettingPageAtMainView, {})
    }


    PageBackground {
        anchors.fill: parent
    }

    ShareEventImageMenu { id: shareMenu; dark: mainView.darkScheme }

    // The screen's headline: today's date, or the next-few-days title, by the page setting, with
    // the appearance button beside it. It is read when the tab changes; like every
    // date on screen it has no day-change timer.
    RowLayout {
        id: headline
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: Theme.spacingPage
        anchors.rightMargin: Theme.spacing
        visible: mainView.shownTab !== "moreView"
        spacing: 0
        Label {
            objectName: "headline"
            Layout.fillWidth: true
            topPadding: 14
            bottomPadding: 2
            text: {
                mainView.shownTab // read again on each tab change
                return TideMarkApp.headline(tabViewSelection.value)
            }
            font.pixelSize: 26
            font.bold: true
            elide: Text.ElideRight
        }
        RowButton {
            objectName: "displayModeButton"
            Layout.topMargin: 10
            symbol: ["sun.min", "moon.zzz"][appearance.colorScheme] ?? "light.max"
            tint: Theme.named("tabBarIconColorForSelected", mainView.darkScheme)
            Accessible.name: qsTrId("lightAndDarkMode")
            onClicked: mainView.openDisplayModePage()
        }
    }


    Item {
        id: pages
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: headline.visible ? headline.bottom : parent.top
        anchors.bottom: tabBar.top

        NumberAnimation {
            id: tabSwitch
            target: pages
            property: "opacity"
            from: 0.6
            to: 1
            duration: 160
            easing.type: Easing.OutCubic
        }

        Loader {
            id: calendarLoader
            objectName: "calendarPageLoader"
            anchors.fill: parent
            visible: mainView.shownTab === "summaryView"
            active: visible || item !== null
            sourceComponent: CalendarPageView {
                darkScheme: mainView.darkScheme
                onEditRequested: id => mainView.openEditForm(id)
                onCardRequested: id => mainView.openCard(id)
                onMemoRequested: id => mainView.openMemos(id)
                onShareRequested: id => mainView.openShareMenu(id)
            }
        }
        Loader {
            id: listLoader
            objectName: "eventListPageLoader"
            anchors.fill: parent
            visible: mainView.shownTab === "eventListView"
            active: visible || item !== null
            sourceComponent: EventListPage {
                onTimelineRequested: mainView.openTimeline()
                onEditRequested: id => mainView.openEditForm(id)
                onCardRequested: id => mainView.openCard(id)
                onMemoRequested: id => mainView.openMemos(id)
                onShareRequested: id => mainView.openShareMenu(id)
            }
        }
        Loader {
            id: settingsLoader
            objectName: "settingsPageLoader"
            anchors.fill: parent
            visible: mainView.shownTab === "moreView"
            active: visible || item !== null
            // The settings screen opens its pages through the main screen's stack.
            sourceComponent: SettingView {
                onPageRequested: (subPage, properties) => mainView.openPage(subPage, properties)
                onNoteRequested: text => mainView.noteRequested(text)
            }
        }
    }

    Rectangle {
        id: tabBar
        objectName: "tabBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 64
        color: mainView.Material.dialogColor

        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            height: 1
            color: mainView.Material.dividerColor
        }

        RowLayout {
            anchors.fill: parent
            anchors.bottomMargin: Theme.spacingSmall
            spacing: 0
            Repeater {
                model: [
                    { tab: "summaryView", symbol: "calendar" },
                    { tab: "eventListView", symbol: "rectangle.stack" },
                    { tab: "moreView", symbol: "rectangle.3.group" },
                    { tab: "addNewEvent", symbol: "plus" }
                ]
                delegate: AbstractButton {
                    id: tabButton
                    required property var modelData
                    readonly property bool isPlus: modelData.tab === "addNewEvent"
                    readonly property bool selected: mainView.shownTab === modelData.tab
                    readonly property string colorName: isPlus ? "tabBarIconColorForPlusButton"
                        : selected ? "tabBarIconColorForSelected" : "tabBarIconColorForNotSelected"
                    objectName: "tab_" + modelData.tab
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    focusPolicy: Qt.NoFocus
                    Accessible.name: modelData.symbol
                    onClicked: isPlus ? mainView.openNewEventForm() : mainView.selectTab(modelData.tab)

                    contentItem: Item {
                        Rectangle {
                            anchors.centerIn: parent
                            width: 56
                            height: 36
                            radius: 18
                            visible: tabButton.isPlus
                            color: Theme.named(tabButton.colorName, mainView.darkScheme)
                            opacity: 0.16
                        }
                        Label {
                            objectName: "tabIcon"
                            anchors.centerIn: parent
                            text: Symbols.glyph(tabButton.modelData.symbol)
                            font.family: Symbols.fontFamily
                            font.pixelSize: Theme.fontLargeTitle
                            color: Theme.named(tabButton.colorName, mainView.darkScheme)
                            scale: tabButton.pressed ? 0.88 : 1
                            Behavior on scale { NumberAnimation { duration: 90 } }
                            Behavior on color { ColorAnimation { duration: 160 } }
                        }
                    }
                }
            }
        }
    }

    // The pages and popups this one opens.
    Component { id: addNewEventPage; AddNewEventPage {} }
    Component { id: cardViewForEventObject; CardViewForEventObject {} }
    Component { id: memoForCardViewPage; MemoForCardViewPage {} }
    Component { id: timelineView; TimelineView {} }
    Component { id: displayModeSettingPageAtMainView; DisplayModeSettingPageAtMainView {} }
}
