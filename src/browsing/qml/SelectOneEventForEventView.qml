import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// Picks the event of the day view: every event, newest first; a tap stores its eventId and goes
// back. The chosen one is checked.
Page {
    id: page
    objectName: "selectOneEventForEventView"

    readonly property bool dark: Material.theme === Material.Dark

    readonly property ThemeColors tone: Theme.colors(page.dark)
    AppStorage { id: selectedEvent; key: "EV_UIOptions_selectExactEventIdForEventCardView"; defaultValue: "" }
    EventViewModel { id: events }

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("selectOneEventForEventViewTitle")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
    }

    ListView {
        id: list
        objectName: "eventChoices"
        anchors.fill: parent
        topMargin: Theme.spacing
        bottomMargin: 24
        leftMargin: Theme.spacingLarge
        rightMargin: Theme.spacingLarge
        spacing: Theme.spacing
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: events.events
        delegate: ItemDelegate {
            id: choice
            required property var modelData
            required property int index
            readonly property string eventId: modelData.eventId
            readonly property string title: modelData.title
            objectName: "eventChoice" + index
            width: ListView.view.width - ListView.view.leftMargin - ListView.view.rightMargin
            implicitHeight: 54
            background: Rectangle {
                radius: Theme.radiusCard
                color: page.tone.cardBackground
                border.color: page.tone.cardBorder
            }
            contentItem: RowLayout {
                spacing: 10
                Label {
                    text: choice.title
                    font.pixelSize: Theme.fontBodyLarge
                    color: page.tone.primaryText
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    visible: selectedEvent.value === choice.eventId
                    text: Symbols.glyph("checkmark")
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontHeader
                    color: Theme.named("tabBarIconColorForSelected", page.dark)
                }
            }
            onClicked: {
                selectedEvent.value = choice.eventId
                page.StackView.view.pop()
            }
        }
    }
}
