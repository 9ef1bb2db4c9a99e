import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// A centred alert over the whole window: a bold title, a message and one button that closes it.
// The object names of its parts are given by the user, so that tests and the tour find them.
Dialog {
    id: dialog

    property bool darkScheme: false
    property color accent: Material.accent
    property alias titleText: titleLabel.text
    property alias message: messageLabel.text
    property alias buttonText: button.text
    property alias titleName: titleLabel.objectName
    property alias messageName: messageLabel.objectName
    property alias buttonName: button.objectName

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(parent ? parent.width - 64 : 300, 320)
    modal: true
    padding: 20
    topPadding: 4
    bottomPadding: 4
    background: Rectangle {
        radius: 16
        color: dialog.darkScheme ? "#2A3036" : "#FFFFFF"
    }
    header: Label {
        id: titleLabel
        padding: 20
        bottomPadding: 8
        wrapMode: Text.Wrap
        font.pixelSize: 18
        font.bold: true
    }
    contentItem: Label {
        id: messageLabel
        wrapMode: Text.Wrap
        font.pixelSize: 15
        opacity: 0.85
    }
    footer: DialogButtonBox {
        alignment: Qt.AlignRight
        background: null
        Button {
            id: button
            flat: true
            font.capitalization: Font.MixedCase
            font.bold: true
            Material.foreground: dialog.accent
            DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
        }
    }
}
