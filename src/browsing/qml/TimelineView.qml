import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The timeline: the kind menu, the link to the next few days, the filter button and the rows of
// the filtered list. Each time it comes on screen it clears the pending reminders (planning them
// afresh joins with the reminder planner). The pages it leads to come later: it emits requests.
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

    BrowsingColors { id: colors; dark: page.dark }
    TimelineActions { id: actions }
    AppStorage { id: kind; key: "TL_UIOptions_showWhichKindEventSelection"; defaultValue: 9 }

    function appeared() { actions.timelineAppeared() }
    Component.onCompleted: if (visible) appeared()
    onVisibleChanged: if (visible) appeared()

    /// Opens the filter page on the enclosing StackView, or the filter popup without one.
    function openFilters() {
        if (page.StackView.view) {
            page.StackView.view.push(Qt.resolvedUrl("ChangeFilterContentPageForTimelineView.qml"))
        } else {
            filterPopup.open()
        }
    }

    background: Rectangle { color: colors.pageBackground }

    header: ToolBar {
        Material.background: colors.pageBackground
        Material.elevation: 0
        implicitHeight: 56
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 8
            anchors.rightMargin: 8
            spacing: 4
            ToolButton {
                id: kindButton
                objectName: "kindMenuButton"
                Layout.fillWidth: true
                Layout.maximumWidth: implicitWidth
                onClicked: kindMenu.open()
                contentItem: RowLayout {
                    spacing: 4
                    Label {
                        objectName: "kindMenuTitle"
                        text: rowsList.listModel.kindMenuTitle
                        font.pixelSize: 20
                        font.weight: Font.DemiBold
                        color: colors.primaryText
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }
                    Label {
                        text: Symbols.glyph("chevron.down")
                        font.family: Symbols.fontFamily
                        font.pixelSize: 20
                        color: colors.secondaryText
                    }
                }
                Menu {
                    id: kindMenu
                    objectName: "kindMenu"
                    y: kindButton.height
                    Repeater {
                        model: [9, 0, 1, 2, 3]
                        delegate: MenuItem {
                            required property int modelData
                            objectName: "kindMenuItem" + modelData
                            text: qsTrId({ 9: "menuShowAllEventStringForTimelineView",
                                           0: "menuShowNotRepeatEventStringForTimelineView",
                                           1: "menuShowRepeatType1EventStringForTimelineView",
                                           2: "menuShowRepeatType2EventStringForTimelineView",
                                           3: "menuShowStarEventStringForTimelineView" }[modelData])
                            checkable: true
                            checked: Number(kind.value) === modelData
                            onTriggered: {
                                kind.value = modelData
                                // A tap toggles `checked` by hand: bind it to the setting again.
                                checked = Qt.binding(() => Number(kind.value) === modelData)
                            }
                        }
                    }
                    MenuSeparator {}
                    MenuItem {
                        objectName: "kindMenuFilters"
                        text: qsTrId("filterContentPageNavigationTitleStringAtFilterPage")
                        onTriggered: page.openFilters()
                    }
                }
            }
            Item { Layout.fillWidth: true }
            RowButton {
                objectName: "filterButton"
                symbol: "line.3.horizontal.decrease.circle"
                tint: colors.primaryText
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
                radius: 16
                color: NamedColors.color("tabBarIconColorForSelected", page.dark)
            }
            contentItem: RowLayout {
                spacing: 10
                Label {
                    text: Symbols.glyph("calendar.badge.clock")
                    font.family: Symbols.fontFamily
                    font.pixelSize: 22
                    color: page.dark ? "#0B1A1E" : "white"
                }
                Label {
                    text: qsTrId("nextFewDaysEventViewNaviLinkStringBigTitleAtBrandNewMainView")
                    font.pixelSize: 16
                    font.weight: Font.DemiBold
                    color: page.dark ? "#0B1A1E" : "white"
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    text: Symbols.glyph("chevron.right")
                    font.family: Symbols.fontFamily
                    font.pixelSize: 22
                    color: page.dark ? "#0B1A1E" : "white"
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
        }
    }

    FilterSettingPopupForMainView { id: filterPopup; dark: page.dark }
}
