import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// Changes the start date of an event, and its end date when it has one. The save is offered
// only while a picker differs from the record; the reset sets both pickers back.
Page {
    id: page
    objectName: "editEventStartDatePage"

    property string eventId
    // Which picker shows its month grid: "start", "end" or "".
    property string openPicker: "start"
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias editor: model

    EditEventStartDateModel {
        id: model
        eventId: page.eventId
    }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("editStartDateAtCardViewForEventObjcetTitleString")
        RowButton {
            objectName: "resetButton"
            symbol: "arrow.uturn.backward"
            tint: page.tone.symbolTint
            onClicked: {
                Haptics.impact()
                model.reset()
            }
        }
        RowButton {
            objectName: "saveButton"
            symbol: model.differs ? "checkmark" : "keyboard.badge.ellipsis"
            tint: model.differs ? Theme.named("tabBarIconColorForSelected", page.dark)
                                : page.tone.secondaryText
            onClicked: {
                Haptics.impact()
                if (model.save())
                    page.StackView.view.pop()
            }
        }
        RowButton {
            objectName: "dismissButton"
            symbol: "chevron.down"
            tint: page.tone.primaryText
            onClicked: page.StackView.view.pop()
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 40
        boundsBehavior: Flickable.StopAtBounds

        ColumnLayout {
            id: column
            x: 16
            y: 12
            width: parent.width - 32
            spacing: 14

            SectionCard {
                visible: model.exists
                colors: page.tone
                Layout.fillWidth: true

                CardDateRow {
                    objectName: "startDateRow"
                    Layout.fillWidth: true
                    colors: page.tone
                    dark: page.dark
                    label: qsTrId("startDateSettingTitleStringAtEditEventStartDatePage")
                    valueText: model.startText
                    expanded: page.openPicker === "start"
                    picker.year: model.startYear
                    picker.month: model.startMonth
                    picker.day: model.startDay
                    onToggled: page.openPicker = expanded ? "" : "start"
                    onPicked: (y, m, d) => model.setStartDate(y, m, d)
                }
                Rectangle {
                    visible: model.hasEndDate
                    Layout.fillWidth: true
                    Layout.leftMargin: 16
                    implicitHeight: 1
                    color: page.tone.cardBorder
                }
                CardDateRow {
                    objectName: "endDateRow"
                    visible: model.hasEndDate
                    Layout.fillWidth: true
                    colors: page.tone
                    dark: page.dark
                    label: qsTrId("endDateSettingTitleStringAtEditEventStartDatePage")
                    valueText: model.endText
                    expanded: page.openPicker === "end"
                    picker.year: model.endYear
                    picker.month: model.endMonth
                    picker.day: model.endDay
                    picker.minimumYear: model.startYear
                    picker.minimumMonth: model.startMonth
                    picker.minimumDay: model.startDay
                    picker.maximumYear: 3000
                    picker.maximumMonth: 12
                    picker.maximumDay: 31
                    onToggled: page.openPicker = expanded ? "" : "end"
                    onPicked: (y, m, d) => model.setEndDate(y, m, d)
                }
            }

            Label {
                objectName: "goneText"
                visible: !model.exists
                text: qsTrId("eventGoneStringAtCardViewForEventObject")
                color: page.tone.secondaryText
                font.pixelSize: Theme.fontSubhead
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
    }
}
