import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The day view with one chosen event: the page's menu (card or details), the date range menu of
// the day window, today, the chosen event's card and the days of the window. The event stays
// chosen until another is picked on selectOneEventForEventView.
Page {
    id: page
    objectName: "eventView"

    readonly property bool dark: Material.theme === Material.Dark
    property bool tapButtonShowCalendarView: false
    property bool goToSelectExactEventPage: false
    readonly property alias menuNumForEventCardView: menuNum.value
    readonly property alias selectExactEventIdForEventCardView: selectedEvent.value
    readonly property alias eventViewDateRangeSeletedInfoFromUser: dateRange.value
    readonly property alias model: dayModel

    readonly property ThemeColors tone: Theme.colors(page.dark)
    EventViewModel { id: dayModel }
    EventRowModel { id: chosen; eventId: selectedEvent.value }
    AppStorage { id: menuNum; key: "EV_UIOptions_menuNumForEventCardView"; defaultValue: 0 }
    AppStorage { id: selectedEvent; key: "EV_UIOptions_selectExactEventIdForEventCardView"; defaultValue: "" }
    AppStorage {
        id: dateRange
        key: "ALL_APP_eventViewDateRangeSeletedInfoFromUser"
        defaultValue: 0
        onValueChanged: dayModel.rebuildDateData(value)
    }
    Component.onCompleted: if (dayModel.dateData.length === 0) dayModel.rebuildDateData(dateRange.value)

    onGoToSelectExactEventPageChanged: {
        if (goToSelectExactEventPage) {
            goToSelectExactEventPage = false
            page.StackView.view.push(selectOneEventForEventView)
        }
    }

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("eventViewTitle")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
        RowButton {
            objectName: "chooseEventToolbarButton"
            symbol: "rectangle.stack"
            tint: page.tone.symbolTint
            onClicked: page.goToSelectExactEventPage = true
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
            spacing: 14

            RowLayout {
                Layout.fillWidth: true
                spacing: Theme.spacing
                ComboBox {
                    objectName: "eventViewMenu"
                    Layout.fillWidth: true
                    model: [qsTrId("menuTitleString01ForEventCardView"), qsTrId("menuTitleString02ForEventCardView")]
                    currentIndex: menuNum.value === 1 ? 1 : 0
                    onActivated: index => menuNum.value = index
                }
                ComboBox {
                    objectName: "eventViewDateRangeMenu"
                    Layout.fillWidth: true
                    model: [qsTrId("eventViewDateRange0"), qsTrId("eventViewDateRange1"), qsTrId("eventViewDateRange2")]
                    currentIndex: Math.max(0, Math.min(2, dateRange.value))
                    onActivated: index => dateRange.value = index
                }
            }

            Label {
                objectName: "todayString"
                text: qsTrId("eventViewTodayLabel").arg(dayModel.todayString).arg(dayModel.todayStringHour)
                font.pixelSize: Theme.fontBody
                font.weight: Font.DemiBold
                color: page.tone.primaryText
            }

            VerticalStackCardUnitView {
                objectName: "chosenEventCard"
                visible: chosen.exists && menuNum.value !== 1
                eventId: selectedEvent.value
                dark: page.dark
                Layout.fillWidth: true
                Layout.preferredHeight: 220
                onCardRequested: id => page.StackView.view.push(cardViewForEventObject, { eventId: id })
            }

            CardEventRow {
                objectName: "chosenEventRow"
                visible: chosen.exists && menuNum.value === 1
                eventId: selectedEvent.value
                colors: page.tone
                dark: page.dark
                Layout.fillWidth: true
            }

            ItemDelegate {
                objectName: "chooseEventButton"
                Layout.fillWidth: true
                implicitHeight: chosen.exists ? 52 : 120
                onClicked: page.goToSelectExactEventPage = true
                background: Rectangle {
                    radius: Theme.radiusLarge
                    color: page.tone.cardBackground
                    border.color: page.tone.cardBorder
                }
                contentItem: Label {
                    text: chosen.exists ? qsTrId("eventViewChooseButton") : qsTrId("eventViewNoEventChosen")
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.fontBody
                    color: Theme.named("tabBarIconColorForSelected", page.dark)
                }
            }

            ListView {
                objectName: "dayStrip"
                Layout.fillWidth: true
                Layout.preferredHeight: 64
                orientation: ListView.Horizontal
                spacing: Theme.spacing
                clip: true
                model: dayModel.dateData
                delegate: Rectangle {
                    id: dateCell
                    required property string modelData
                    required property int index
                    width: 96
                    height: 64
                    radius: Theme.radiusCard
                    color: index === 0 ? Theme.named("tabBarIconColorForSelected", page.dark) : page.tone.cardBackground
                    border.color: page.tone.cardBorder
                    Column {
                        anchors.centerIn: parent
                        Label {
                            anchors.horizontalCenter: parent.horizontalCenter
                            text: dateCell.modelData.slice(8, 10)
                            font.pixelSize: Theme.fontHeader
                            font.weight: Font.Bold
                            color: dateCell.index === 0 ? page.tone.selectedText : page.tone.primaryText
                        }
                        Label {
                            anchors.horizontalCenter: parent.horizontalCenter
                            text: dateCell.modelData.slice(0, 7)
                            font.pixelSize: Theme.fontCaption
                            color: dateCell.index === 0 ? page.tone.selectedText : page.tone.secondaryText
                        }
                    }
                }
            }
        }
    }

    // The pages and popups this one opens.
    Component { id: selectOneEventForEventView; SelectOneEventForEventView {} }
    Component { id: cardViewForEventObject; CardViewForEventObject {} }
}
