import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Browsing
import TideMark.Components

// The rows of the filtered list, one event row each, with the "nothing here" box when the list is
// empty. The rows' requests are passed on; with `offersSchedule` each row has a schedule button.
ListView {
    id: list

    readonly property bool dark: Material.theme === Material.Dark
    property alias listModel: rows
    property bool offersSchedule: false

    signal memoRequested(string eventId)
    signal editRequested(string eventId)
    signal shareRequested(string eventId)
    signal cardRequested(string eventId)
    signal scheduleRequested(string eventId)

    readonly property ThemeColors colors: Theme.colors(list.dark)

    spacing: Theme.spacingMedium
    clip: true
    topMargin: Theme.spacing
    bottomMargin: 24
    leftMargin: Theme.spacingLarge
    rightMargin: Theme.spacingLarge
    boundsBehavior: Flickable.StopAtBounds
    model: FilteredEventListModel { id: rows }

    delegate: ListRowViewForTimeline {
        required eventId
        offersSchedule: list.offersSchedule
        width: ListView.view.width - ListView.view.leftMargin - ListView.view.rightMargin
        onMemoRequested: id => list.memoRequested(id)
        onEditRequested: id => list.editRequested(id)
        onShareRequested: id => list.shareRequested(id)
        onCardRequested: id => list.cardRequested(id)
        onScheduleRequested: id => list.scheduleRequested(id)
    }

    footer: Item {
        width: list.width - list.leftMargin - list.rightMargin
        height: rows.showEmptyBox ? 140 : 0
        Rectangle {
            objectName: "emptyBox"
            visible: rows.showEmptyBox
            anchors.fill: parent
            anchors.topMargin: Theme.spacingSmall
            radius: Theme.radiusLarge
            color: list.colors.cardBackground
            border.color: list.colors.cardBorder
            Label {
                anchors.centerIn: parent
                width: parent.width - 32
                text: qsTrId("notiObjectsCountZero")
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontBody
                color: list.colors.secondaryText
            }
        }
    }
}
