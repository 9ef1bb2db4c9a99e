import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The repeat rule of the new event form. Everything is kept in the form's persisted settings as
// it changes, so going back by the back button keeps it too; the checkmark stands only while the
// rule is complete.
Page {
    id: page
    objectName: "repeatEventSettingPage"
    title: qsTrId("editEventRepeatSettingNavigationTitleStringAtRepeatEventSettingPage")

    // Emitted when the page leaves by one of its own buttons.
    signal leaving()

    function leave() {
        leaving()
        if (page.StackView.view)
            page.StackView.view.pop()
    }

    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(page.dark)
    background: PageBackground {}

    AddRepeatRuleModel { id: rule; objectName: "model" }
    Component.onCompleted: rule.appear()

    header: PageHeader {
        leadingMargin: 0
        titleInset: Theme.spacingLarge
        title: page.title
        colors: page.colors
        leadingSymbol: page.StackView.view !== null && page.StackView.index > 0 ? "chevron.left" : ""
        onLeadingClicked: page.StackView.view.pop()
        RowButton {
            objectName: "confirmButton"
            symbol: rule.complete ? "checkmark" : "keyboard.badge.ellipsis"
            tint: rule.complete ? page.Material.accent : page.colors.secondaryText
            onClicked: {
                Haptics.impact()
                if (rule.complete)
                    page.leave()
            }
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: editor.implicitHeight + 40
        clip: true
        RulesRepeatEditor {
            id: editor
            x: 16
            y: 12
            width: parent.width - 32
            model: rule
            colors: page.colors
        }
    }
}
