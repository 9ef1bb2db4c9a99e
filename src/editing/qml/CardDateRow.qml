import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Editing
import TideMark.Components

// A compact date row: the label and the chosen day as a chip; a tap on the chip opens or closes
// the month grid under the row. The owner decides what a picked day becomes.
ColumnLayout {
    id: row
    property string label
    property string valueText
    property bool expanded: false
    property var colors
    property bool dark: false
    property alias picker: grid
    signal toggled()
    signal picked(int year, int month, int day)
    spacing: 0

    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.rightMargin: 10
        Layout.minimumHeight: 52
        spacing: Theme.spacing
        Label {
            text: row.label
            font.pixelSize: Theme.fontBodyLarge
            color: row.colors.primaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        AbstractButton {
            id: chip
            objectName: "dateChip"
            focusPolicy: Qt.NoFocus
            implicitWidth: chip.contentItem.implicitWidth + 24
            implicitHeight: 34
            onClicked: row.toggled()
            background: Rectangle {
                radius: Theme.radiusSmall
                color: row.colors.chipBackground
            }
            contentItem: Label {
                text: row.valueText
                font.pixelSize: Theme.fontBodyLarge
                font.weight: Font.Medium
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                color: row.expanded ? Theme.named("tabBarIconColorForSelected", row.dark)
                                    : row.colors.primaryText
            }
        }
    }
    FormDatePicker {
        id: grid
        objectName: "datePicker"
        visible: row.expanded
        Layout.fillWidth: true
        Layout.bottomMargin: 8
        onPicked: (y, m, d) => row.picked(y, m, d)
    }
}
