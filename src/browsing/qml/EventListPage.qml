import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The event list tab: every time it comes on screen the kind filter goes back to all events, then
// it lists the rows of the filtered list. Its header holds the kind menu under the kind's title,
// the way to the timeline and the filter button, which opens the filter popup.
Page {
    id: page
    objectName: "eventListPage"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias rows: rowsList.listModel

    signal memoRequested(string eventId)
    signal editRequested(string eventId)
    signal shareRequested(string eventId)
    signal cardRequested(string eventId)
    signal timelineRequested()

    readonly property ThemeColors colors: Theme.colors(page.dark)
    AppStorage { id: kind; key: "TL_UIOptions_showWhichKindEventSelection"; defaultValue: 9 }

    function appeared() { kind.value = 9 }
    Component.onCompleted: if (visible) appeared()
    onVisibleChanged: if (visible) appeared()

    background: null

    header: ToolBar {
        Material.elevation: 0
        background: null
        implicitHeight: 48
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacing
            anchors.rightMargin: Theme.spacing
            KindFilterButton {
                objectName: "kindTitle"
                title: rowsList.listModel.kindMenuTitle
                fontSize: 16
            }
            Item { Layout.fillWidth: true }
            ToolButton {
                objectName: "timelineButton"
                onClicked: page.timelineRequested()
                contentItem: RowLayout {
                    spacing: 6
                    Label {
                        text: Symbols.glyph("timeline.selection")
                        font.family: Symbols.fontFamily
                        font.pixelSize: Theme.fontHeader
                        color: Theme.named("tabBarIconColorForSelected", page.dark)
                    }
                    Label {
                        text: qsTrId("timelineButtonStringAtEventList")
                        font.pixelSize: Theme.fontBody
                        color: Theme.named("tabBarIconColorForSelected", page.dark)
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

    EventRowsList {
        id: rowsList
        objectName: "eventListRows"
        anchors.fill: parent
        onMemoRequested: id => page.memoRequested(id)
        onEditRequested: id => page.editRequested(id)
        onShareRequested: id => page.shareRequested(id)
        onCardRequested: id => page.cardRequested(id)
    }

    FilterSettingPopupForMainView { id: filterPopup; dark: page.dark }
}
