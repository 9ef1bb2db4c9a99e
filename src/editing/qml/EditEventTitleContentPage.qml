import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// Changes the title and content of an event. The save is offered only with a title; it writes
// the title, then the content, each only if it changed, and closes the page.
Page {
    id: page
    objectName: "editEventTitleContentPage"

    property string eventId
    // Which field has the keyboard: "title" or "content".
    property string focusField: "title"
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias editor: model

    EditEventTitleContentModel {
        id: model
        eventId: page.eventId
    }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("navigationTitleStringAtEditEventTitleContentPage")
        leadingSymbol: "chevron.down"
        onLeadingClicked: page.StackView.view.pop()
        RowButton {
            objectName: "saveButton"
            symbol: model.canSave ? "checkmark" : "keyboard.badge.ellipsis"
            tint: model.canSave ? Theme.named("tabBarIconColorForSelected", page.dark)
                                : page.tone.secondaryText
            onClicked: {
                Haptics.impact()
                if (model.save())
                    page.StackView.view.pop()
            }
        }
    }

    ColumnLayout {
        x: 16
        y: 12
        width: parent.width - 32
        spacing: 14

        SectionCard {
            colors: page.tone
            Layout.fillWidth: true
            TextField {
                id: titleField
                objectName: "titleField"
                Layout.fillWidth: true
                Layout.leftMargin: 12
                Layout.rightMargin: 12
                placeholderText: qsTrId("addNewEventMemoTitleSpaceholderString")
                text: model.titleForEvent
                font.pixelSize: Theme.fontTitle
                color: page.tone.primaryText
                focus: page.focusField === "title"
                onTextEdited: model.titleForEvent = text
                onActiveFocusChanged: if (activeFocus) page.focusField = "title"
            }
        }
        SectionCard {
            colors: page.tone
            Layout.fillWidth: true
            TextArea {
                id: contentField
                objectName: "contentField"
                Layout.fillWidth: true
                Layout.leftMargin: 12
                Layout.rightMargin: 12
                Layout.minimumHeight: 140
                placeholderText: qsTrId("addNewEventMemoContentSpaceholderString")
                text: model.contentForEvent
                font.pixelSize: Theme.fontBodyLarge
                color: page.tone.primaryText
                wrapMode: TextEdit.Wrap
                focus: page.focusField === "content"
                onTextChanged: if (text !== model.contentForEvent) model.contentForEvent = text
                onActiveFocusChanged: if (activeFocus) page.focusField = "content"
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
