import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Editing
import TideMark.Components

// A compact graphical date picker: a month header with arrows and a grid of days. A tap on the
// title turns the grid into the years (twenty a page), a year into its months, a month into its
// days, so any day is a few taps away. It shows the chosen day (year, month, day) and reports a
// tap, or Enter, with picked(); the owner decides what the chosen day becomes. Days outside the
// optional range [minimum, maximum] can't be picked, nor years and months wholly outside it.
// Keys: arrows move the cursor, PageUp and PageDown a month (with Shift or Ctrl a year), Enter
// picks or opens, Escape goes back to the days.
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
    property color accentColor: Theme.named("selectedDateBackground", darkScheme)
    property color accentTextColor: Theme.named("selectedDateTextFroeground", darkScheme)
    readonly property bool darkScheme: Material.theme === Material.Dark

    signal picked(int year, int month, int day)

    implicitWidth: 320
    implicitHeight: header.height + body.height + 12
    activeFocusOnTab: true

    readonly property int selectedKey: year * 10000 + month * 100 + day
    readonly property int minimumKey: minimumYear > 0
                                      ? minimumYear * 10000 + minimumMonth * 100 + minimumDay : 0
    readonly property int maximumKey: maximumYear > 0
                                      ? maximumYear * 10000 + maximumMonth * 100 + maximumDay : 0
    // The cursor is drawn once the keyboard is in use; a tap hides it again.
    property bool keyboardInUse: false
    readonly property bool showCursor: keyboardInUse && activeFocus

    // The page on show follows the chosen day whenever that changes from outside.
    function showChosenMonth() {
        pages.show(year, month, day)
    }
    onYearChanged: showChosenMonth()
    onMonthChanged: showChosenMonth()
    onDayChanged: showChosenMonth()
    Component.onCompleted: showChosenMonth()

    function tapped() {
        keyboardInUse = false
        forceActiveFocus(Qt.MouseFocusReason)
    }

    Keys.onPressed: event => {
        if (pages.handleKey(event.key, event.modifiers)) {
            keyboardInUse = true
            event.accepted = true
        }
    }

    FormDatePickerModel {
        id: pages
        minimumKey: picker.minimumKey
        maximumKey: picker.maximumKey
        onActivated: (y, m, d) => picker.picked(y, m, d)
    }

    RowLayout {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: 44
        spacing: 0

        AbstractButton {
            id: titleButton
            objectName: "datePickerTitle"
            Layout.leftMargin: 4
            Layout.maximumWidth: header.width - 96
            implicitHeight: 36
            implicitWidth: titleButton.contentItem.implicitWidth + 16
            focusPolicy: Qt.NoFocus
            onClicked: {
                picker.tapped()
                pages.toggleYears()
            }
            background: Rectangle {
                radius: 18
                color: picker.accentColor
                opacity: titleButton.pressed ? 0.15 : 0
            }
            contentItem: RowLayout {
                spacing: 2
                Label {
                    objectName: "datePickerTitleText"
                    Layout.leftMargin: 8
                    Layout.fillWidth: true
                    text: pages.title
                    font.pixelSize: Theme.fontTitle
                    font.bold: true
                    elide: Text.ElideRight
                    color: pages.mode === FormDatePickerModel.Days ? picker.Material.foreground
                                                                   : picker.accentColor
                }
                Label {
                    text: Symbols.glyph("chevron.down")
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontHeadline
                    color: picker.accentColor
                    rotation: pages.mode === FormDatePickerModel.Days ? 0 : 180
                    Behavior on rotation { NumberAnimation { duration: 150 } }
                }
            }
        }
        Item { Layout.fillWidth: true }
        ToolButton {
            objectName: "datePickerPrevious"
            Layout.preferredWidth: 44
            enabled: pages.canStepBack
            text: Symbols.glyph("chevron.left")
            font.family: Symbols.fontFamily
            font.pixelSize: 26
            focusPolicy: Qt.NoFocus
            Material.foreground: picker.accentColor
            onClicked: {
                picker.tapped()
                pages.step(-1)
            }
        }
        ToolButton {
            objectName: "datePickerNext"
            Layout.preferredWidth: 44
            enabled: pages.canStepForward
            text: Symbols.glyph("chevron.right")
            font.family: Symbols.fontFamily
            font.pixelSize: 26
            focusPolicy: Qt.NoFocus
            Material.foreground: picker.accentColor
            onClicked: {
                picker.tapped()
                pages.step(1)
            }
        }
    }

    // The three grids share one area, as high as the month's weeks need, so a change of grid
    // doesn't move what lies under the picker.
    Item {
        id: body
        anchors.top: header.bottom
        anchors.topMargin: Theme.spacingSmall
        anchors.horizontalCenter: parent.horizontalCenter
        width: cellWidth * 7
        height: inDays ? daysHeight : heldHeight
        readonly property real cellWidth: Math.floor(Math.min(picker.width, 420) / 7)
        readonly property bool inDays: pages.mode === FormDatePickerModel.Days
        readonly property real daysHeight: 22 + 2 + Math.ceil(pages.cells.length / 7) * 40
        // The months and years keep the height the days had, whatever month the cursor is in.
        property real heldHeight: daysHeight
        onInDaysChanged: if (!inDays) heldHeight = daysHeight

        Row {
            id: weekdays
            visible: pages.mode === FormDatePickerModel.Days
            height: 22
            Repeater {
                model: pages.weekdaySymbols
                Label {
                    required property string modelData
                    width: body.cellWidth
                    horizontalAlignment: Text.AlignHCenter
                    text: modelData
                    font.pixelSize: Theme.fontCaption
                    font.bold: true
                    opacity: 0.5
                }
            }
        }

        Grid {
            id: grid
            visible: pages.mode === FormDatePickerModel.Days
            anchors.top: weekdays.bottom
            anchors.topMargin: 2
            columns: 7

            Repeater {
                model: pages.cells
                DateCell {
                    required property int modelData
                    readonly property int key: pages.year * 10000 + pages.month * 100 + modelData
                    objectName: modelData > 0 ? "dateCell_" + modelData : ""
                    width: body.cellWidth
                    height: 40
                    text: modelData > 0 ? modelData : ""
                    chosen: modelData > 0 && key === picker.selectedKey
                    cursor: modelData > 0 && modelData === pages.day
                    allowed: modelData > 0 && key >= pages.firstKey && key <= pages.lastKey
                    onClicked: {
                        picker.tapped()
                        picker.picked(pages.year, pages.month, modelData)
                    }
                }
            }
        }

        Grid {
            visible: pages.mode === FormDatePickerModel.Months
            anchors.verticalCenter: parent.verticalCenter
            columns: 3

            Repeater {
                model: pages.monthSymbols
                DateCell {
                    required property string modelData
                    required property int index
                    readonly property int key: pages.year * 10000 + (index + 1) * 100
                    objectName: "monthCell_" + (index + 1)
                    width: body.width / 3
                    height: Math.min(56, body.height / 4)
                    pillWidth: width - 16
                    text: modelData
                    chosen: pages.year === picker.year && index + 1 === picker.month
                    cursor: index + 1 === pages.month
                    // A month whose last day is before the range, or whose first is after it,
                    // has nothing to pick.
                    allowed: key + 31 >= pages.firstKey && key + 1 <= pages.lastKey
                    onClicked: {
                        picker.tapped()
                        pages.chooseMonth(index + 1)
                    }
                }
            }
        }

        Grid {
            visible: pages.mode === FormDatePickerModel.Years
            anchors.verticalCenter: parent.verticalCenter
            columns: 4

            Repeater {
                model: pages.years
                DateCell {
                    required property int modelData
                    objectName: "yearCell_" + modelData
                    width: body.width / 4
                    height: Math.min(48, body.height / 5)
                    pillWidth: width - 12
                    text: modelData
                    chosen: modelData === picker.year
                    cursor: modelData === pages.year
                    allowed: modelData * 10000 + 1231 >= pages.firstKey
                             && modelData * 10000 + 101 <= pages.lastKey
                    onClicked: {
                        picker.tapped()
                        pages.chooseYear(modelData)
                    }
                }
            }
        }
    }

    // One cell of any grid: a pill, filled when chosen, ringed under the keyboard cursor.
    component DateCell: AbstractButton {
        id: cell
        property bool chosen: false
        property bool cursor: false
        property bool allowed: true
        property real pillWidth: 36
        enabled: allowed
        focusPolicy: Qt.NoFocus

        contentItem: Item {
            Rectangle {
                anchors.centerIn: parent
                width: cell.pillWidth
                height: 36
                radius: 18
                color: cell.chosen ? picker.accentColor : "transparent"
                border.width: cell.cursor && picker.showCursor ? 2 : 0
                border.color: cell.chosen ? picker.Material.foreground : picker.accentColor
            }
            Rectangle {
                anchors.centerIn: parent
                width: cell.pillWidth
                height: 36
                radius: 18
                visible: cell.pressed && !cell.chosen
                color: picker.accentColor
                opacity: 0.15
            }
            Label {
                anchors.centerIn: parent
                text: cell.text
                font.pixelSize: Theme.fontBodyLarge
                font.bold: cell.chosen
                color: cell.chosen ? picker.accentTextColor
                     : !cell.allowed ? picker.Material.hintTextColor
                     : picker.Material.foreground
            }
        }
    }
}
