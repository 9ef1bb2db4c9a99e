import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The reminder of a stored event, opened from its card. Turning the switch off is written at
// once; the checkmark writes the switch, the lead time and the time of day, then leaves.
Page {
    id: page
    objectName: "editNotiSettingPage"
    title: qsTrId("editEventNotiSettingNavigationTitleStringAtRepeatEventSettingPage")

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

    EditNotiRuleModel { id: rule; objectName: "model"; eventId: page.eventId }

    header: PageHeader {
        leadingMargin: 0
        titleInset: Theme.spacingLarge
        title: page.title
        colors: page.colors
        leadingSymbol: page.StackView.view !== null && page.StackView.index > 0 ? "chevron.left" : ""
        onLeadingClicked: page.StackView.view.pop()
        RowButton {
            objectName: "confirmButton"
            symbol: rule.canConfirm ? "checkmark" : "keyboard.badge.ellipsis"
            tint: rule.canConfirm ? page.Material.accent : page.colors.secondaryText
            onClicked: {
                if (rule.canConfirm) {
                    rule.confirm()
                    Haptics.impact()
                    page.leave()
                } else {
                    Haptics.impact()
                }
            }
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

            SectionCard {
                padded: true
                Layout.fillWidth: true
                colors: page.colors
                SwitchRow {
                    objectName: "notiSwitch"
                    colors: page.colors
                    Layout.fillWidth: true
                    text: qsTrId("addNewEventPagePickerForSetNotiForThisNotReapeatEventTrue")
                    checked: rule.notiOn
                    onToggled: rule.notiOn = checked
                }
            }

            RulesNotiEditor {
                objectName: "notiEditor"
                visible: rule.notiOn
                Layout.fillWidth: true
                model: rule
                colors: page.colors
            }
        }
    }
}
