import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Components

// A centred alert over the whole window: a bold title, a message, the button that confirms
// (accepted) and, when `cancelText` is given, one that cancels (rejected).
// The object names of its parts are given by the user, so that tests and the tour find them.
Dialog {
    id: dialog

    property bool darkScheme: false
    property color accent: Material.accent
    property alias titleText: titleLabel.text
    property string message
    property alias buttonText: button.text
    property string cancelText: ""
    property alias titleName: titleLabel.objectName
    property string messageName
    property alias buttonName: button.objectName

    parent: Overlay.overlay
    anchors.centerIn: parent
    // Already its final width before the overlay is known, so that the message doesn't wrap
    // anew (and change the height in the middle of a layout) when the page enters the window.
    width: Math.min(parent ? parent.width - 64 : 320, 320)
    modal: true
    padding: 20
    topPadding: 4
    bottomPadding: 4
    background: Rectangle {
        radius: Theme.radiusLarge
        color: Theme.colors(dialog.darkScheme).dialogBackground
    }
    header: Label {
        id: titleLabel
        padding: 20
        bottomPadding: 8
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontEmphasis
        font.bold: true
    }
    contentItem: Label {
        objectName: dialog.messageName
        text: dialog.message
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontBody
        opacity: 0.85
    }
    footer: DialogButtonBox {
        alignment: Qt.AlignRight
        background: null
        Button {
            visible: dialog.cancelText !== ""
            text: dialog.cancelText
            flat: true
            font.capitalization: Font.MixedCase
            DialogButtonBox.buttonRole: Dialog.RejectRole
        }
        Button {
            id: button
            flat: true
            font.capitalization: Font.MixedCase
            font.bold: true
            Material.foreground: dialog.accent
            DialogButtonBox.buttonRole: Dialog.AcceptRole
        }
    }
}
