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

    function selectTab(tab) {
        Haptics.impact()
        tabSwitch.restart()
        currentTabSetting.value = tab
    }

    // Pushes a page onto the window's stack (the main screen is its bottom page); a bare file
    // name is a page of the window's folder.
    function openPage(url, properties) {
        if (mainView.StackView.view)
            mainView.StackView.view.push(Qt.resolvedUrl(url), properties || {})
    }

    function openNewEventForm() {
        Haptics.impact()
        openPage("AddNewEventPage.qml", { editOrAddNewEventCheckValue: false, eventId: "",
                                          resetAllDataWhenEnterFromCardView: true })
    }

    // What the rows of the calendar and list pages ask for.
    function openEditForm(eventId) {
        openPage("AddNewEventPage.qml", { editOrAddNewEventCheckValue: true, eventId: eventId,
                                          resetAllDataWhenEnterFromCardView: true })
    }
    function openCard(eventId) {
        openPage("CardViewForEventObject.qml", { eventId: eventId })
    }
    function openMemos(eventId) {
        openPage("MemoForCardViewPage.qml", { eventId: eventId })
    }

    function openShareMenu(eventId) {
        shareMenu.eventId = eventId
        shareMenu.open()
    }

    function openTimeline() {
        Haptics.impact()
        openPage("TimelineView.qml", {})
    }
    function openDisplayModePage() {
        Haptics.impact()
        openPage("DisplayModeSettingPageAtMainView.qml", {})
    }

    AppStorage { id: alwaysLight; key: "colorSchemeSetToAlwaysLight"; defaultValue: false }
    AppStorage { id: alwaysDark; key: "colorSchemeSetToAlwaysDark"; defaultValue: false }

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
        anchors.leftMargin: 20
        anchors.rightMargin: 8
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
            symbol: alwaysLight.value ? "sun.min" : alwaysDark.value ? "moon.zzz" : "light.max"
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
                onPageRequested: (url, properties) => mainView.openPage(url, properties)
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
            anchors.bottomMargin: 4
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
                            font.pixelSize: 28
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
}
