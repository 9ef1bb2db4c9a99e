import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Components

// Hour and minute wheels. Shows `hour` and `minute` and reports a turn with picked().
RowLayout {
    id: picker
    property int hour: 0
    property int minute: 0
    property var colors
    signal picked(int hour, int minute)
    spacing: Theme.spacingSmall

    function twoDigits(n) { return n < 10 ? "0" + n : "" + n }

    // Wheels follow the values whenever those change from outside.
    onHourChanged: if (hourWheel.currentIndex !== hour) hourWheel.currentIndex = hour
    onMinuteChanged: if (minuteWheel.currentIndex !== minute) minuteWheel.currentIndex = minute

    Item { Layout.fillWidth: true }
    Tumbler {
        id: hourWheel
        objectName: "hourWheel"
        model: 24
        visibleItemCount: 3
        implicitHeight: 120
        implicitWidth: 64
        currentIndex: picker.hour
        delegate: Label {
            required property int modelData
            required property int index
            text: picker.twoDigits(modelData)
            font.pixelSize: Theme.fontHeader
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            color: picker.colors.primaryText
            opacity: 1.0 - Math.abs(Tumbler.displacement) / 2
        }
        onMovingChanged: if (!moving && currentIndex !== picker.hour)
                             picker.picked(currentIndex, picker.minute)
    }
    Label {
        text: ":"
        font.pixelSize: Theme.fontHeadline
        font.weight: Font.DemiBold
        color: picker.colors.primaryText
    }
    Tumbler {
        id: minuteWheel
        objectName: "minuteWheel"
        model: 60
        visibleItemCount: 3
        implicitHeight: 120
        implicitWidth: 64
        currentIndex: picker.minute
        delegate: Label {
            required property int modelData
            required property int index
            text: picker.twoDigits(modelData)
            font.pixelSize: Theme.fontHeader
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            color: picker.colors.primaryText
            opacity: 1.0 - Math.abs(Tumbler.displacement) / 2
        }
        onMovingChanged: if (!moving && currentIndex !== picker.minute)
                             picker.picked(picker.hour, currentIndex)
    }
    Item { Layout.fillWidth: true }
}
