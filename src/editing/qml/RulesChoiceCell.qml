import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Components

// A cell of the weekday and month-day grids: a text or a symbol, filled with the accent colour
// while selected.
AbstractButton {
    id: cell
    property bool selected: false
    property string symbol: ""
    property var colors
    implicitHeight: 40
    implicitWidth: 40
    padding: 0

    background: Rectangle {
        radius: 10
        color: cell.selected ? cell.Material.accent : cell.colors.chipBackground
        opacity: cell.pressed ? 0.7 : 1
    }
    contentItem: Label {
        text: cell.symbol !== "" ? Symbols.glyph(cell.symbol) : cell.text
        font.family: cell.symbol !== "" ? Symbols.fontFamily : cell.font.family
        font.pixelSize: cell.symbol !== "" ? 20 : 14
        font.weight: cell.selected ? Font.DemiBold : Font.Normal
        color: cell.selected ? cell.colors.selectedText : cell.colors.primaryText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}
