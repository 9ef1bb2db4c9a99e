import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Toolkit
import TideMark.Components

// The month control: a row of weekday letters over six weeks of day cells, from the calendar's
// first weekday on. What each cell shows comes from MonthModel; a tap on a cell selects its day.
// No scrolling: the month moves only through moveMonth().
Item {
    id: control

    property bool darkScheme: false
    property alias monthToShowDate: month.monthToShowDate
    property alias selectedDate: month.selectedDate
    readonly property string monthTitle: month.monthTitle
    readonly property alias model: month

    signal daySelected(date date)

    function moveMonth(months) { month.moveMonth(months) }
    // Draws the month and the selection afresh (today may have moved on since).
    function refresh() { month.refresh() }

    implicitHeight: 320

    MonthModel { id: month }

    Row {
        id: weekdayHeader
        anchors.left: parent.left
        anchors.right: parent.right
        height: 28
        Repeater {
            model: month.weekdaySymbols
            Label {
                required property string modelData
                width: weekdayHeader.width / 7
                height: weekdayHeader.height
                text: modelData
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                font.pixelSize: Theme.fontSmall
                opacity: 0.55
            }
        }
    }

    Grid {
        id: grid
        objectName: "monthGrid"
        anchors.top: weekdayHeader.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        columns: 7
        Repeater {
            id: cells
            objectName: "dayCells"
            model: month
            DayViewForExpense {
                required property int index
                required property date date
                required property string dayText
                required property bool isCurrentMonth
                required property bool isPast
                required property bool isToday
                required property bool isSelected
                required property var colorNames
                objectName: "day_" + index
                width: grid.width / 7
                height: grid.height / 6
                cellDate: date
                text: dayText
                currentMonth: isCurrentMonth
                past: isPast
                today: isToday
                selected: isSelected
                eventColorNames: colorNames
                darkScheme: control.darkScheme
                onTapped: control.daySelected(date)
            }
        }
    }
}
