import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Editing
import TideMark.Components

// The fields of a memo: title, content and its date and time, bound to a MemoEditorModel.
// Shared by the half-height sheet and the centred popup.
ColumnLayout {
    id: form
    property var editor
    property var colors
    property bool dark: false
    property bool dateOpen: false
    // Which field has the keyboard: "title" or "content".
    property string focusField: "title"
    spacing: Theme.spacingMedium

    SectionCard {
        colors: form.colors
        Layout.fillWidth: true
        TextField {
            objectName: "memoTitleField"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            placeholderText: qsTrId("addNewEventMemoTitleSpaceholderString")
            text: form.editor.titleForEventMemo
            font.pixelSize: Theme.fontTitle
            color: form.colors.primaryText
            focus: form.focusField === "title"
            onTextEdited: form.editor.titleForEventMemo = text
            onActiveFocusChanged: if (activeFocus) form.focusField = "title"
        }
    }
    SectionCard {
        colors: form.colors
        Layout.fillWidth: true
        TextArea {
            objectName: "memoContentField"
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            Layout.minimumHeight: 96
            placeholderText: qsTrId("addNewEventMemoContentSpaceholderString")
            text: form.editor.contentForEventMemo
            font.pixelSize: Theme.fontBodyLarge
            color: form.colors.primaryText
            wrapMode: TextEdit.Wrap
            focus: form.focusField === "content"
            onTextChanged: if (text !== form.editor.contentForEventMemo)
                               form.editor.contentForEventMemo = text
            onActiveFocusChanged: if (activeFocus) form.focusField = "content"
        }
    }
    SectionCard {
        colors: form.colors
        Layout.fillWidth: true
        CardDateRow {
            objectName: "memoDateRow"
            Layout.fillWidth: true
            colors: form.colors
            dark: form.dark
            label: qsTrId("memoDateTitleStringAtMemoForCardViewPage")
            valueText: form.editor.dateText
            expanded: form.dateOpen
            picker.year: form.editor.year
            picker.month: form.editor.month
            picker.day: form.editor.day
            onToggled: form.dateOpen = !form.dateOpen
            onPicked: (y, m, d) => form.editor.setDate(y, m, d, form.editor.hour, form.editor.minute)
        }
        CardTimePicker {
            objectName: "memoTimePicker"
            visible: form.dateOpen
            Layout.fillWidth: true
            Layout.bottomMargin: 8
            colors: form.colors
            hour: form.editor.hour
            minute: form.editor.minute
            onPicked: (h, m) => form.editor.setDate(form.editor.year, form.editor.month,
                                                    form.editor.day, h, m)
        }
    }
}
