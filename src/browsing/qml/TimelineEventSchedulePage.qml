import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The schedule page of one event, reached from its timeline row: back, edit (the event card) and
// share buttons, then the event's summary card while the event exists. Each time the page comes
// on screen it works out the event's coming dates again and appends their texts to
// `dateStringInfo`.
Page {
    id: page
    objectName: "timelineEventSchedulePage"

    property string eventId
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias schedule: scheduleModel
    readonly property var dateStringInfo: scheduleModel.dateStringInfo

    EventScheduleModel { id: scheduleModel; eventId: page.eventId }
    EventRowModel { id: record; eventId: page.eventId }
    readonly property ThemeColors tone: Theme.colors(page.dark)
    AppStorage { id: editTarget; key: "ALL_APP_editEventIdStringPassFromTL"; defaultValue: "" }

    function appeared() { scheduleModel.loadEventSchedule() }
    Component.onCompleted: if (visible) appeared()
    onVisibleChanged: if (visible) appeared()

    background: PageBackground {}

    header: ToolBar {
        Material.elevation: 0
        background: null
        implicitHeight: 56
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacingSmall
            anchors.rightMargin: Theme.spacingSmall
            spacing: 0
            RowButton {
                objectName: "backButton"
                symbol: "chevron.left"
                tint: page.tone.primaryText
                onClicked: page.StackView.view.pop()
            }
            Item { Layout.fillWidth: true }
            RowButton {
                objectName: "scheduleEditButton"
                symbol: "square.and.pencil"
                tint: page.tone.primaryText
                onClicked: {
                    editTarget.value = page.eventId
                    page.StackView.view.push(cardViewForEventObject,
                                             { eventId: page.eventId })
                }
            }
            RowButton {
                objectName: "scheduleShareButton"
                // Shown once sharing an event as a picture is part of the app.
                visible: record.exists
                symbol: "square.and.arrow.up"
                tint: page.tone.primaryText
                onClicked: {
                    shareMenu.open()
                }
            }
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 32
        boundsBehavior: Flickable.StopAtBounds

        ColumnLayout {
            id: column
            x: 16
            y: 8
            width: parent.width - 32
            spacing: Theme.spacingLarge

            SummaryView {
                eventId: page.eventId
                Layout.fillWidth: true
            }
        }
    }

    // The pages and popups this one opens.
    Component { id: cardViewForEventObject; CardViewForEventObject {} }
    ShareEventImageMenu { id: shareMenu; eventId: page.eventId }
}
