import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Toolkit
import TideMark.Components

// One day of the month control. The day number stands inside a ring cut into one arc per event,
// in the sorted colour names of the day's events; the selected day is a filled circle without a
// ring instead; a past day is faded.
Item {
    id: cell

    property date cellDate
    property string text
    property bool currentMonth: true
    property bool past: false
    property bool today: false
    property bool selected: false
    property var eventColorNames: []
    property bool darkScheme: false
    readonly property alias ring: ring

    signal tapped()

    // The ring and the circle keep to a square in the middle of the cell.
    readonly property real side: Math.min(width, height) - 6

    opacity: selected ? 1.0 : (past ? 0.28 : 1.0)

    Rectangle {
        objectName: "selectedCircle"
        anchors.centerIn: parent
        width: cell.side
        height: cell.side
        radius: width / 2
        visible: cell.selected
        color: Theme.named("selectedDateBackground", cell.darkScheme)
    }

    DayRing {
        id: ring
        objectName: "ring"
        anchors.centerIn: parent
        width: cell.side
        height: cell.side
        visible: !cell.selected
        opacity: 0.723
        lineWidth: 2
        colorNames: cell.eventColorNames
        namedColors: Theme.colors(cell.darkScheme).named
    }

    Label {
        objectName: "dayText"
        anchors.centerIn: parent
        text: cell.text
        font.bold: true
        font.pixelSize: Theme.fontBody
        color: cell.selected ? Theme.named("selectedDateTextFroeground", cell.darkScheme)
             : cell.today ? Theme.named("selectedDateBackground", cell.darkScheme)
             : cell.Material.foreground
        // Days of the neighbouring months are drawn lighter.
        opacity: cell.currentMonth || cell.selected ? 1.0 : 0.45
    }

    TapHandler {
        onTapped: cell.tapped()
    }
}
