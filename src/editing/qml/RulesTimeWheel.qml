import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Editing
import TideMark.Components

// A wheel time picker: hours 00 to 23 and minutes 00 to 59.
Row {
    id: time
    property int hour: 0
    property int minute: 0
    property var colors
    signal timePicked(int hour, int minute)
    spacing: Theme.spacing

    RulesWheel {
        objectName: "hourWheel"
        model: 24
        value: time.hour
        colors: time.colors
        onPicked: (v) => time.timePicked(v, time.minute)
    }
    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: ":"
        font.pixelSize: Theme.fontHeadline
        color: time.colors.primaryText
    }
    RulesWheel {
        objectName: "minuteWheel"
        model: 60
        value: time.minute
        colors: time.colors
        onPicked: (v) => time.timePicked(time.hour, v)
    }
}
