import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The half-height sheet that adds a memo to an event (or edits one, when `memoId` is set).
// Shown alone it leaves through its StackView; inside an opener's drawer it asks to be closed.
Page {
    id: page
    objectName: "memoForCardViewAddMemoHalfPage"

    property string eventId
    property string memoId: ""
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias editor: model
    signal closeRequested()
    signal saved()

    function dismiss() {
        if (page.StackView.view)
            page.StackView.view.pop()
        else
            page.closeRequested()
    }
    // Fills the form afresh: the memo's values in edit mode, empty fields and now in add mode.
    function begin() {
        model.eventId = page.eventId
        if (page.memoId === "" || !model.startEdit(page.memoId))
            model.startAdd()
    }
    Component.onCompleted: begin()

    MemoEditorModel { id: model }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: model.editOrAddNewMemoStatu ? qsTrId("editMemoTitleStringAtMemoForCardViewPage")
                                           : qsTrId("addMemoTitleStringAtMemoForCardViewPage")
        leadingSymbol: "chevron.down"
        onLeadingClicked: page.dismiss()
        RowButton {
            objectName: "saveButton"
            symbol: model.canSave ? "checkmark" : "keyboard.badge.ellipsis"
            tint: model.canSave ? Theme.named("tabBarIconColorForSelected", page.dark)
                                : page.tone.secondaryText
            onClicked: {
                Haptics.impact()
                if (model.save()) {
                    page.saved()
                    page.dismiss()
                }
            }
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: form.implicitHeight + 32
        boundsBehavior: Flickable.StopAtBounds
        CardMemoForm {
            id: form
            x: 16
            y: 12
            width: parent.width - 32
            editor: model
            colors: page.tone
            dark: page.dark
        }
    }
}
