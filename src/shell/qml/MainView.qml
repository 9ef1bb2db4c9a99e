import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The main screen: the page of the selected tab above a bar of four items of its own. The
// selected tab survives a restart; the plus item opens the new-event form and never becomes the
// selected tab. A page is built the first time its tab is shown and kept after that.
Item {
    id: mainView

    property bool darkScheme: false
    property var popups: null
    // A tab shown for a picture, over the persisted one; "" shows the persisted tab.
    property string pictureTab: ""

    readonly property string currentTab: currentTabSetting.value
    readonly property string shownTab: pictureTab !== "" ? pictureTab : currentTab

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

    function openNewEventForm() {
        Haptics.impact()
        // The form lands in a later version; until then a short note says so.
        if (popups)
            popups.show(comingNote, "top")
    }

    Rectangle {
        anchors.fill: parent
        color: mainView.Material.background
    }

    // The screen's headline: today's date, or the next-few-days title, by the page setting. It
    // is read when the tab changes; like every date on screen it has no day-change timer.
    Label {
        id: headline
        objectName: "headline"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        topPadding: 14
        bottomPadding: 2
        visible: mainView.shownTab !== "moreView" && text !== ""
        text: {
            mainView.shownTab // read again on each tab change
            return TideMarkApp.headline(tabViewSelection.value)
        }
        font.pixelSize: 26
        font.bold: true
        elide: Text.ElideRight
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
            }
        }
        Loader {
            id: listLoader
            objectName: "eventListPageLoader"
            anchors.fill: parent
            visible: mainView.shownTab === "eventListView"
            active: visible || item !== null
            sourceComponent: EventListPageView {
                darkScheme: mainView.darkScheme
                shown: listLoader.visible
            }
        }
        Loader {
            id: settingsLoader
            objectName: "settingsPageLoader"
            anchors.fill: parent
            visible: mainView.shownTab === "moreView"
            active: visible || item !== null
            sourceComponent: SettingPlaceholderView {}
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
                            color: NamedColors.color(tabButton.colorName, mainView.darkScheme)
                            opacity: 0.16
                        }
                        Label {
                            objectName: "tabIcon"
                            anchors.centerIn: parent
                            text: Symbols.glyph(tabButton.modelData.symbol)
                            font.family: Symbols.fontFamily
                            font.pixelSize: 28
                            color: NamedColors.color(tabButton.colorName, mainView.darkScheme)
                            scale: tabButton.pressed ? 0.88 : 1
                            Behavior on scale { NumberAnimation { duration: 90 } }
                            Behavior on color { ColorAnimation { duration: 160 } }
                        }
                    }
                }
            }
        }
    }

    Component {
        id: comingNote
        // A snackbar: inverse colours, so it stands out on either scheme.
        Rectangle {
            objectName: "comingNote"
            implicitWidth: Math.min(noteText.implicitWidth + 40, mainView.width - 48)
            implicitHeight: noteText.implicitHeight + 28
            radius: 12
            color: mainView.darkScheme ? "#E6E9EC" : "#2B3137"
            Label {
                id: noteText
                anchors.fill: parent
                anchors.leftMargin: 20
                anchors.rightMargin: 20
                verticalAlignment: Text.AlignVCenter
                horizontalAlignment: Text.AlignHCenter
                text: qsTrId("newEventFormComingString")
                wrapMode: Text.Wrap
                font.pixelSize: 15
                color: mainView.darkScheme ? "#1C2430" : "#F1F4F6"
            }
        }
    }
}
