import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// A flat round button that shows one symbol.
ToolButton {
    id: button
    property string symbol
    property color tint: Material.foreground
    implicitWidth: 40
    implicitHeight: 40
    padding: 0
    contentItem: Label {
        text: Symbols.glyph(button.symbol)
        font.family: Symbols.fontFamily
        font.pixelSize: 20
        color: button.tint
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
