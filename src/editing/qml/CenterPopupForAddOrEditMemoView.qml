import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The centred popup that edits a memo (or adds one when `memoId` is empty): the same fields and
// save as the sheet, and an xmark that closes it without writing.
Page {
    id: page
    objectName: "centerPopupForAddOrEditMemoView"

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
    function begin() {
        model.eventId = page.eventId
        if (page.memoId === "" || !model.startEdit(page.memoId))
            model.startAdd()
    }
    Component.onCompleted: begin()

    MemoEditorModel { id: model }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: Rectangle { color: page.tone.pageBackground; radius: 18 }
    implicitWidth: 340
    implicitHeight: header.implicitHeight + form.implicitHeight + 32

    header: PageHeader {
        colors: page.tone
        title: model.editOrAddNewMemoStatu ? qsTrId("editMemoTitleStringAtMemoForCardViewPage")
                                           : qsTrId("addMemoTitleStringAtMemoForCardViewPage")
        leadingSymbol: "xmark"
        onLeadingClicked: page.dismiss()
        // The header's surface would square off the popup's rounded top.
        background: Item {}
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
        contentHeight: form.implicitHeight + 24
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        CardMemoForm {
            id: form
            x: 12
            y: 8
            width: parent.width - 24
            editor: model
            colors: page.tone
            dark: page.dark
        }
    }
}
