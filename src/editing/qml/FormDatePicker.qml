import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// A compact graphical date picker: a month header with arrows and a grid of days. It shows the
// chosen day (year, month, day) and reports a tap with picked(); the owner decides what the
// chosen day becomes. Days outside the optional range [minimum, maximum] can't be tapped.
//
//     FormDatePicker {
//         year: form.startPickerYear; month: form.startPickerMonth; day: form.startPickerDay
//         onPicked: (y, m, d) => form.pickStartDate(y, m, d)
//     }
Item {
    id: picker

    property int year: 2000
    property int month: 1
    property int day: 1
    // The range, each as y/m/d; 0 in the year means no limit on that side.
    property int minimumYear: 0
    property int minimumMonth: 1
    property int minimumDay: 1
    property int maximumYear: 0
    property int maximumMonth: 12
    property int maximumDay: 31
    property color accentColor: NamedColors.color("selectedDateBackground", darkScheme)
    property color accentTextColor: NamedColors.color("selectedDateTextFroeground", darkScheme)
    readonly property bool darkScheme: Material.theme === Material.Dark

    signal picked(int year, int month, int day)

    implicitWidth: 320
    implicitHeight: header.height + weekdays.height + grid.height + 12

    readonly property int selectedKey: year * 10000 + month * 100 + day
    readonly property int minimumKey: minimumYear > 0
                                      ? minimumYear * 10000 + minimumMonth * 100 + minimumDay : 0
    readonly property int maximumKey: maximumYear > 0
                                      ? maximumYear * 10000 + maximumMonth * 100 + maximumDay : 0

    // The month on show follows the chosen day whenever that changes from outside.
    function showChosenMonth() {
        pages.year = year
        pages.month = month
    }
    onYearChanged: showChosenMonth()
    onMonthChanged: showChosenMonth()
    Component.onCompleted: showChosenMonth()

    FormDatePickerModel { id: pages }

    RowLayout {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: 44
        spacing: 0

        Label {
            objectName: "datePickerTitle"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            text: pages.title
            font.pixelSize: 17
            font.bold: true
            elide: Text.ElideRight
        }
        ToolButton {
            objectName: "datePickerPrevious"
            Layout.preferredWidth: 44
            text: Symbols.glyph("chevron.left")
            font.family: Symbols.fontFamily
            font.pixelSize: 26
            Material.foreground: picker.accentColor
            onClicked: pages.moveMonth(-1)
        }
        ToolButton {
            objectName: "datePickerNext"
            Layout.preferredWidth: 44
            text: Symbols.glyph("chevron.right")
            font.family: Symbols.fontFamily
            font.pixelSize: 26
            Material.foreground: picker.accentColor
            onClicked: pages.moveMonth(1)
        }
    }

    Row {
        id: weekdays
        anchors.top: header.bottom
        anchors.topMargin: 4
        anchors.horizontalCenter: parent.horizontalCenter
        height: 22
        Repeater {
            model: pages.weekdaySymbols
            Label {
                required property string modelData
                width: grid.cellWidth
                horizontalAlignment: Text.AlignHCenter
                text: modelData
                font.pixelSize: 12
                font.bold: true
                opacity: 0.5
            }
        }
    }

    Grid {
        id: grid
        anchors.top: weekdays.bottom
        anchors.topMargin: 2
        anchors.horizontalCenter: parent.horizontalCenter
        columns: 7
        readonly property real cellWidth: Math.floor(Math.min(picker.width, 420) / 7)
        readonly property real cellHeight: 40

        Repeater {
            model: pages.cells
            AbstractButton {
                id: cell
                required property int modelData
                required property int index
                readonly property int key: pages.year * 10000 + pages.month * 100 + modelData
                readonly property bool chosen: modelData > 0 && key === picker.selectedKey
                readonly property bool allowed: modelData > 0
                                                && (picker.minimumKey === 0 || key >= picker.minimumKey)
                                                && (picker.maximumKey === 0 || key <= picker.maximumKey)
                objectName: modelData > 0 ? "dateCell_" + modelData : ""
                width: grid.cellWidth
                height: grid.cellHeight
                enabled: allowed
                focusPolicy: Qt.NoFocus
                onClicked: picker.picked(pages.year, pages.month, modelData)

                contentItem: Item {
                    Rectangle {
                        anchors.centerIn: parent
                        width: 36
                        height: 36
                        radius: 18
                        color: cell.chosen ? picker.accentColor : "transparent"
                    }
                    Rectangle {
                        anchors.centerIn: parent
                        width: 36
                        height: 36
                        radius: 18
                        visible: cell.pressed && !cell.chosen
                        color: picker.accentColor
                        opacity: 0.15
                    }
                    Label {
                        anchors.centerIn: parent
                        visible: cell.modelData > 0
                        text: cell.modelData
                        font.pixelSize: 16
                        font.bold: cell.chosen
                        color: cell.chosen ? picker.accentTextColor
                             : !cell.allowed ? picker.Material.hintTextColor
                             : picker.Material.foreground
                    }
                }
            }
        }
    }
}
