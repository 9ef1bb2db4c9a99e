import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The repeat rule of a stored event, opened from its card. The page edits a copy; the checkmark
// (shown only while something differs and the rule is whole) writes each changed field, the
// undo arrow puts the stored values back, and the chevron leaves without writing.
Page {
    id: page
    objectName: "editRepeatEventSettingPage"
    title: qsTrId("editEventRepeatSettingNavigationTitleStringAtRepeatEventSettingPage")

    property string eventId: ""
    signal leaving()

    function leave() {
        leaving()
        if (page.StackView.view)
            page.StackView.view.pop()
    }

    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(page.dark)
    background: PageBackground {}

    EditRepeatRuleModel { id: rule; objectName: "model"; eventId: page.eventId }

    header: PageHeader {
        leadingMargin: 0
        titleInset: Theme.spacingLarge
        title: page.title
        colors: page.colors
        RowButton {
            objectName: "restoreButton"
            symbol: "arrow.uturn.backward"
            tint: page.colors.primaryText
            onClicked: { rule.restore(); Haptics.impact() }
        }
        RowButton {
            objectName: "confirmButton"
            symbol: rule.canSave ? "checkmark" : "keyboard.badge.ellipsis"
            tint: rule.canSave ? page.Material.accent : page.colors.secondaryText
            onClicked: {
                if (rule.canSave) {
                    rule.save()
                    Haptics.impact()
                    page.leave()
                } else {
                    Haptics.impact()
                }
            }
        }
        RowButton {
            objectName: "dismissButton"
            symbol: "chevron.down"
            tint: page.colors.primaryText
            onClicked: { Haptics.impact(); page.leave() }
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: content.implicitHeight + 40
        clip: true
        ColumnLayout {
            id: content
            x: 16
            y: 12
            width: parent.width - 32
            spacing: 18

            RowLayout {
                objectName: "warningRow"
                Layout.fillWidth: true
                Layout.leftMargin: 4
                spacing: Theme.spacing
                Label {
                    text: Symbols.glyph("exclamationmark.circle")
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontEmphasis
                    color: page.colors.warning
                    Layout.alignment: Qt.AlignTop
                }
                Label {
                    text: qsTrId("changeEventSettingWillCloseNotiSettingStringAtEditEventPage")
                    color: page.colors.warning
                    font.pixelSize: Theme.fontSmall
                    wrapMode: Text.WordWrap
                    Layout.fillWidth: true
                }
            }

            RulesRepeatEditor {
                Layout.fillWidth: true
                model: rule
                colors: page.colors
                editMode: true
            }

            SectionCard {
                padded: true
                Layout.fillWidth: true
                colors: page.colors
                SwitchRow {
                    objectName: "endDateSwitch"
                    colors: page.colors
                    Layout.fillWidth: true
                    text: qsTrId("addNewEventPageContentString02-endDateString")
                    checked: rule.endDateOn
                    onToggled: rule.endDateOn = checked
                }
                Label {
                    objectName: "endDateText"
                    visible: rule.endDateOn
                    text: String(rule.endYear).padStart(4, "0") + "-"
                          + String(rule.endMonth).padStart(2, "0") + "-"
                          + String(rule.endDay).padStart(2, "0")
                    color: page.colors.secondaryText
                    Layout.alignment: Qt.AlignRight
                }
                FormDatePicker {
                    objectName: "endDatePicker"
                    visible: rule.endDateOn
                    Layout.fillWidth: true
                    year: rule.endYear
                    month: rule.endMonth
                    day: rule.endDay
                    minimumYear: rule.startYear
                    minimumMonth: rule.startMonth
                    minimumDay: rule.startDay
                    maximumYear: 3000
                    maximumMonth: 12
                    maximumDay: 31
                    onPicked: (y, m, d) => rule.setEndDate(y, m, d)
                }
            }
        }
    }
}
