import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark
import TideMark.Components

// The one window: a stack of pages with the main screen at its bottom, the popup presenter above
// it.
ApplicationWindow {
    id: window
    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: qsTrId("appDisplayName")

    // "light" or "dark" while pictures of the pages are taken; "" follows the user's theme.
    property string pictureScheme: ""
    readonly property string scheme: pictureScheme !== "" ? pictureScheme
                                                          : TideMarkApp.preferredColorScheme
    readonly property bool darkScheme: Material.theme === Material.Dark

    Material.theme: scheme === "light" ? Material.Light
                  : scheme === "dark" ? Material.Dark
                  : Material.System
    Material.accent: Theme.named("selectedDateBackground", darkScheme)

    /// Leaves every page above the main screen at once.
    function returnToMainScreen() {
        appStack.pop(null, StackView.Immediate)
    }

    /// Shows a short note at the top of the window for a moment.
    function showNote(text) {
        note.text = text
        note.open()
    }

    // Escape and the Back key leave the top page (an open popup or menu closes itself first);
    // Ctrl+N opens the new-event form from anywhere but the form itself.
    Shortcut {
        sequences: [StandardKey.New]
        onActivated: {
            const top = appStack.currentItem
            if (!top || top.objectName !== "addNewEventPage")
                mainView.openNewEventForm()
        }
    }

    // The pages of the window: the main screen at the bottom, the pages it opens above it.
    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: event => window.goBack(event)
        Keys.onBackPressed: event => window.goBack(event)

        StackView {
            id: appStack
            objectName: "appStack"
            anchors.fill: parent
            focus: true
            initialItem: MainView {
                id: mainView
                objectName: "mainView"
                darkScheme: window.darkScheme
                popups: popupManager
                onNoteRequested: text => window.showNote(text)
            }
        }
    }

    function goBack(event) {
        if (appStack.depth > 1) {
            appStack.pop()
            event.accepted = true
        }
    }

    ToolTip {
        id: note
        objectName: "note"
        parent: Overlay.overlay
        x: (parent.width - width) / 2
        y: 24
        timeout: 2200
        font.pixelSize: Theme.fontBody
    }

    // A settings or reminders file that could not be read was kept aside and made afresh: the
    // user is told once, on start or when the window comes back, in words they can read.
    function tellDamagedFiles() {
        const messages = Array.from(TideMarkApp.takeDamagedFileMessages())
        if (messages.length === 0)
            return
        damagedFileDialog.message = (damagedFileDialog.opened ? damagedFileDialog.message + "\n\n"
                                                              : "") + messages.join("\n\n")
        damagedFileDialog.open()
    }
    Component.onCompleted: tellDamagedFiles()
    onActiveChanged: if (active) tellDamagedFiles()

    AlertDialog {
        id: damagedFileDialog
        objectName: "damagedFileDialog"
        darkScheme: window.darkScheme
        titleText: qsTrId("damagedFileNoticeTitleString")
        buttonText: qsTrId("damagedFileNoticeOkString")
        messageName: "damagedFileText"
        buttonName: "damagedFileOkButton"
    }

    PopupManager {
        id: popupManager
        objectName: "popupManager"
        anchors.fill: parent
    }

    // The app lock: while it is in force it covers the pages and takes all input.
    UnlockAppView {
        anchors.fill: parent
    }
}
