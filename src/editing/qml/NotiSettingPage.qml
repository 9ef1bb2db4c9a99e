import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// When the new event's reminder fires: works on the form's persisted settings, so every tap is
// kept at once; the checkmark stands while a lead time is chosen.
Page {
    id: page
    objectName: "notiSettingPage"
    title: qsTrId("editEventNotiSettingNavigationTitleStringAtRepeatEventSettingPage")

    signal leaving()

    function leave() {
        leaving()
        if (page.StackView.view)
            page.StackView.view.pop()
    }

    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(page.dark)
    background: PageBackground {}

    AddNotiRuleModel { id: rule; objectName: "model" }
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
            symbol: rule.canConfirm ? "checkmark" : "keyboard.badge.ellipsis"
            tint: rule.canConfirm ? page.Material.accent : page.colors.secondaryText
            onClicked: {
                Haptics.impact()
                if (rule.canConfirm)
                    page.leave()
            }
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: editor.implicitHeight + 40
        clip: true
        RulesNotiEditor {
            id: editor
            x: 16
            y: 12
            width: parent.width - 32
            model: rule
            colors: page.colors
        }
    }
}
