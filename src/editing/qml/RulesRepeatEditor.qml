import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The body shared by the two repeat pages: the type picker with what the type needs (time wheel,
// weekday grid, day grid or date picker), then the interval switch and wheel. `model` is an
// AddRepeatRuleModel or an EditRepeatRuleModel; `editMode` draws the last-day cell
// as a symbol with its guide text under the grid.
ColumnLayout {
    id: editor
    property var model
    property var colors
    property bool editMode: false
    spacing: 18

    function tapped() { Haptics.impact() }

    SectionCard {
        padded: true
        Layout.fillWidth: true
        colors: editor.colors

        RulesTypePicker {
            objectName: "typePicker"
            Layout.fillWidth: true
            type: editor.model.eventType
            colors: editor.colors
            onPicked: (type) => editor.model.eventType = type
        }

        Label {
            objectName: "noTypeText"
            visible: editor.model.eventType < 1 || editor.model.eventType > 4
            text: qsTrId("tellUserChoseOneCycleTimeForCycleOrNot=0")
            color: editor.colors.secondaryText
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }

        RulesTimeWheel {
            objectName: "dailyTime"
            visible: editor.model.eventType === 1
            Layout.alignment: Qt.AlignHCenter
            hour: editor.model.hour
            minute: editor.model.minute
            colors: editor.colors
            onTimePicked: (h, m) => editor.model.setTime(h, m)
        }

        GridLayout {
            objectName: "weekdayGrid"
            visible: editor.model.eventType === 2
            Layout.fillWidth: true
            columns: 4
            columnSpacing: 8
            rowSpacing: 8
            Repeater {
                model: 7
                RulesChoiceCell {
                    required property int index
                    objectName: "weekday" + (index + 1)
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    colors: editor.colors
                    text: qsTrId("weekForWeekMutilSelection0" + (index + 1))
                    selected: editor.model.weekList.indexOf(index + 1) >= 0
                    onClicked: { editor.model.tapWeekday(index + 1); editor.tapped() }
                }
            }
            RulesChoiceCell {
                objectName: "weekdayShortcut"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                colors: editor.colors
                text: qsTrId("weekForWeekMutilSelection08")
                selected: editor.model.weekdayShortcutLit
                onClicked: { editor.model.tapWeekdayShortcut(); editor.tapped() }
            }
        }

        ColumnLayout {
            visible: editor.model.eventType === 3
            Layout.fillWidth: true
            spacing: 10
            GridLayout {
                objectName: "monthDayGrid"
                Layout.fillWidth: true
                columns: 7
                columnSpacing: 6
                rowSpacing: 6
                Repeater {
                    model: 31
                    RulesChoiceCell {
                        required property int index
                        objectName: "monthDay" + (index + 1)
                        Layout.fillWidth: true
                        Layout.preferredWidth: 1
                        implicitHeight: 36
                        colors: editor.colors
                        text: String(index + 1).padStart(2, "0")
                        selected: editor.model.monthList.indexOf(index + 1) >= 0
                        onClicked: { editor.model.tapMonthDay(index + 1); editor.tapped() }
                    }
                }
                RulesChoiceCell {
                    objectName: "monthDay99"
                    Layout.fillWidth: true
                    Layout.columnSpan: 2
                    Layout.preferredWidth: 2
                    implicitHeight: 36
                    colors: editor.colors
                    text: qsTrId("slecectLastDayOfOneMonthStringAtRepeatEventSettingPage")
                    symbol: editor.editMode ? "forward.end" : ""
                    selected: editor.model.monthList.indexOf(99) >= 0
                    onClicked: { editor.model.tapMonthDay(99); editor.tapped() }
                }
                RulesChoiceCell {
                    objectName: "monthDayClear"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    implicitHeight: 36
                    colors: editor.colors
                    symbol: "delete.left"
                    onClicked: { editor.model.clearMonthDays(); editor.tapped() }
                }
            }
            Label {
                objectName: "lastDayGuide"
                visible: editor.editMode
                text: qsTrId("monthMutilSelectionsLastDayOfMonthUseGuideString")
                color: editor.colors.secondaryText
                font.pixelSize: Theme.fontSmall
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
            Label {
                text: qsTrId("monthMutilSelectionsSomeMonthDonotHave293031String")
                color: editor.colors.secondaryText
                font.pixelSize: Theme.fontSmall
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
        }

        FormDatePicker {
            objectName: "yearlyDate"
            visible: editor.model.eventType === 4
            Layout.fillWidth: true
            year: editor.model.startYear
            month: editor.model.startMonth
            day: editor.model.startDay
            onPicked: (y, m, d) => editor.model.setStartDate(y, m, d)
        }
    }

    SectionCard {
        padded: true
        Layout.fillWidth: true
        colors: editor.colors

        SwitchRow {
            objectName: "intervalSwitch"
            colors: editor.colors
            Layout.fillWidth: true
            text: qsTrId("addNewEventPageContentString02-3")
            checked: editor.model.intervalOn
            onToggled: editor.model.intervalOn = checked
        }
        Label {
            visible: editor.model.intervalOn
            text: qsTrId("customizeIntervalExplanationString")
            color: editor.colors.secondaryText
            font.pixelSize: Theme.fontSmall
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
        Label {
            objectName: "intervalNoTypeText"
            visible: editor.model.intervalOn && editor.model.intervalRowCount === 0
            text: qsTrId("tellUserChoseOneCycleTimeForCycleOrNot=0")
            color: editor.colors.secondaryText
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
        RowLayout {
            visible: editor.model.intervalOn && editor.model.intervalRowCount > 0
            Layout.alignment: Qt.AlignHCenter
            spacing: Theme.spacing
            RulesWheel {
                objectName: "intervalWheel"
                model: editor.model.intervalRowCount
                first: 1
                digits: 1
                value: editor.model.intervalValue
                colors: editor.colors
                onPicked: (v) => editor.model.intervalValue = v
            }
            Label {
                objectName: "intervalUnit"
                text: editor.model.intervalUnitText.trim()
                font.pixelSize: Theme.fontEmphasis
                color: editor.colors.primaryText
            }
        }
    }
}
