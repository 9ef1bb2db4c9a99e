import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// A switch row (the rule pages, the card): the label at the leading side, the app's switch at the
// trailing side.
TideSwitch {
    id: control
    property ThemeColors colors
    padding: 4
    spacing: 12

    contentItem: Label {
        text: control.text
        font.pixelSize: 16
        color: control.colors.primaryText
        wrapMode: Text.WordWrap
        verticalAlignment: Text.AlignVCenter
        rightPadding: control.indicator.width + control.spacing
    }
}
