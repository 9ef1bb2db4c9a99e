import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The event list tab: every time it comes on screen the kind filter goes back to all events, then
// it lists the rows of the filtered list. The filter button opens the filter popup.
Page {
    id: page
    objectName: "eventListPage"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias rows: rowsList.listModel

    signal memoRequested(string eventId)
    signal editRequested(string eventId)
    signal shareRequested(string eventId)
    signal cardRequested(string eventId)

    BrowsingColors { id: colors; dark: page.dark }
    AppStorage { id: kind; key: "TL_UIOptions_showWhichKindEventSelection"; defaultValue: 9 }

    function appeared() { kind.value = 9 }
    Component.onCompleted: if (visible) appeared()
    onVisibleChanged: if (visible) appeared()

    background: PageBackground {}

    header: ToolBar {
        Material.elevation: 0
        background: null
        implicitHeight: 48
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 20
            anchors.rightMargin: 8
            Label {
                objectName: "kindTitle"
                text: rowsList.listModel.kindMenuTitle
                font.pixelSize: 15
                font.weight: Font.DemiBold
                color: colors.secondaryText
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            RowButton {
                objectName: "filterButton"
                symbol: "line.3.horizontal.decrease.circle"
                tint: colors.primaryText
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
