import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Browsing
import TideMark.Components

// The rule box of a weekly or monthly list: the week grid (Monday first) or the month grid of the
// current month, then the rule in words. Set `eventType` (2 week, 3 month) and `eventArrayData`,
// the stored archive of the list.
ColumnLayout {
    id: box
    objectName: "summaryViewSubPageForMonthlyAndWeeklyEvent"

    property int eventType: 0
    property var eventArrayData: new ArrayBuffer(0)
    property bool dark: Material.theme === Material.Dark
    readonly property alias rules: ruleBox

    spacing: 10

    SummaryRuleBoxModel {
        id: ruleBox
        eventType: box.eventType
        eventArrayData: box.eventArrayData
    }

    readonly property ThemeColors tone: Theme.colors(box.dark)

    component Cell: Rectangle {
        property string label
        property bool selected: false
        property bool header: false
        Layout.fillWidth: true
        implicitHeight: 34
        radius: Theme.radiusSmall
        // The selected form: cyan on a deep teal that keeps it legible on a light page too.
        color: selected ? box.tone.summarySelected : "transparent"
        border.width: selected ? 1 : 0
        border.color: box.tone.selectedCell
        Label {
            anchors.centerIn: parent
            text: parent.label
            font.pixelSize: parent.header ? 12 : 14
            font.weight: parent.selected || parent.header ? Font.DemiBold : Font.Normal
            color: parent.selected ? box.tone.selectedCell
                                   : parent.header ? box.tone.secondaryText : box.tone.primaryText
        }
    }

    GridLayout {
        objectName: "weekGrid"
        visible: box.eventType === 2
        columns: 7
        columnSpacing: 4
        rowSpacing: 4
        Layout.fillWidth: true
        Repeater {
            model: ruleBox.weekLabels
            Cell {
                required property string modelData
                required property int index
                objectName: "weekCell" + index
                label: modelData
                selected: ruleBox.weekSelected[index] === true
            }
        }
    }

    GridLayout {
        objectName: "monthGrid"
        visible: box.eventType === 3 && ruleBox.showsMonthGrid
        columns: 7
        columnSpacing: 4
        rowSpacing: 4
        Layout.fillWidth: true
        Repeater {
            model: ruleBox.monthHeader
            Cell {
                required property string modelData
                label: modelData
                header: true
                implicitHeight: 24
            }
        }
        Repeater {
            model: ruleBox.leadingBlanks
            Item { Layout.fillWidth: true; implicitHeight: 34 }
        }
        Repeater {
            model: ruleBox.dayCells
            Cell {
                required property int index
                objectName: "dayCell" + (index + 1)
                label: String(index + 1)
                selected: Array.from(ruleBox.selectedDays).indexOf(index + 1) >= 0
            }
        }
    }

    Label {
        objectName: "ruleText"
        visible: text.length > 0
        text: ruleBox.text
        font.pixelSize: Theme.fontSubhead
        color: box.tone.primaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
