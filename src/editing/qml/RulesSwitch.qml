import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// A switch row of the rule pages: the label at the leading side, the app's switch at the
// trailing side.
TideSwitch {
    id: control
    property var colors
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
