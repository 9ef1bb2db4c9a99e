import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark
import TideMark.Components

// The calendar tab: the month header with its arrows, the month grid, and the events of the
// selected day. Each appearance runs the page's hook (first-launch work, the day's fill).
Item {
    id: page
    objectName: "calendarPageView"

    property bool darkScheme: false

    // A row's buttons and tap, passed up to whoever opens pages.
    signal editRequested(string eventId)
    signal cardRequested(string eventId)
    signal memoRequested(string eventId)
    signal shareRequested(string eventId)
    property alias monthToShowDate: calendar.monthToShowDate

    Component.onCompleted: CalendarPage.appeared()
    onVisibleChanged: {
        if (!visible)
            return
        CalendarPage.appeared()
        calendar.refresh()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            id: monthHeader
            Layout.fillWidth: true
            Layout.topMargin: 8
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            spacing: 0

            ToolButton {
                objectName: "previousMonthButton"
                text: Symbols.glyph("arrowtriangle.backward")
                font.family: Symbols.fontFamily
                font.pixelSize: 34
                onClicked: {
                    Haptics.impact()
                    calendar.moveMonth(-1)
                }
            }
            Label {
                objectName: "monthLabel"
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: calendar.monthTitle
                font.pixelSize: Theme.fontHeader
                font.bold: true
                elide: Text.ElideRight
            }
            ToolButton {
                objectName: "nextMonthButton"
                text: Symbols.glyph("arrowtriangle.forward")
                font.family: Symbols.fontFamily
                font.pixelSize: 34
                onClicked: {
                    Haptics.impact()
                    calendar.moveMonth(1)
                }
            }
        }

        MCalendarView {
            id: calendar
            objectName: "calendar"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            Layout.preferredHeight: Math.min(width, page.height * 0.55)
            darkScheme: page.darkScheme
            selectedDate: CalendarPage.todayDateForDatePickerDefault
            onDaySelected: (date) => CalendarPage.todayDateForDatePickerDefault = date
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            Layout.topMargin: 4
            implicitHeight: 1
            color: page.Material.dividerColor
        }

        ListView {
            id: dayList
            objectName: "dayList"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: Theme.spacing
            leftMargin: Theme.spacingLarge
            rightMargin: Theme.spacingLarge
            topMargin: 10
            bottomMargin: 10
            model: DataStore.todayDataForUI
            delegate: ListRowViewForTimeline {
                required property string modelData
                width: ListView.view.width - ListView.view.leftMargin - ListView.view.rightMargin
                eventId: modelData
                onEditRequested: id => page.editRequested(id)
                onCardRequested: id => page.cardRequested(id)
                onMemoRequested: id => page.memoRequested(id)
                onShareRequested: id => page.shareRequested(id)
            }

            Label {
                objectName: "noEventLabel"
                anchors.centerIn: parent
                width: parent.width - 40
                visible: dayList.count === 0
                text: qsTrId("noEventForTodayString")
                horizontalAlignment: Text.AlignHCenter
                maximumLineCount: 1
                elide: Text.ElideRight
                opacity: 0.6
                font.pixelSize: Theme.fontBodyLarge
            }
        }
    }
}
