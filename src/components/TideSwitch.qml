import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// The app's switch: a track in the accent colour when on and a round white knob, drawn here so
// that it looks the same on every card, in light and dark, and wherever the scene is rendered.
// The indicator sits at the trailing side; a text, if any, is laid out by the user of the switch.
Switch {
    id: control

    readonly property bool darkScheme: Material.theme === Material.Dark

    indicator: Rectangle {
        implicitWidth: 50
        implicitHeight: 30
        x: control.width - width - control.rightPadding
        y: control.topPadding + (control.availableHeight - height) / 2
        radius: height / 2
        color: control.checked ? control.Material.accent
                               : Theme.colors(control.darkScheme).switchTrack
        Behavior on color { ColorAnimation { duration: 120 } }
        Rectangle {
            width: parent.height - 4
            height: width
            radius: width / 2
            y: 2
            x: control.checked ? parent.width - width - 2 : 2
            color: Theme.colors(control.darkScheme).switchThumb
            border.width: 1
            border.color: Theme.colors(control.darkScheme).switchThumbBorder
            Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }
        }
    }
}
