import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Components

// One wheel of numbers from `first` on, `count` rows. `value` shows the row of that number;
// `picked(value)` is emitted only when the user turns the wheel, so a value that no row has (or
// a new row count) never writes anything by itself.
Tumbler {
    id: wheel
    property int first: 0
    property int value: 0
    property int digits: 2
    property var colors
    signal picked(int value)

    implicitWidth: 64
    implicitHeight: 150
    visibleItemCount: 5
    wrap: false

    delegate: Label {
        required property int index
        required property var modelData
        text: String(wheel.first + index).padStart(wheel.digits, "0")
        font.pixelSize: Theme.fontHeader
        color: wheel.colors.primaryText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        opacity: 1.0 - Math.abs(Tumbler.displacement) / (wheel.visibleItemCount / 2)
    }

    Rectangle {
        z: -1
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        height: parent.availableHeight / wheel.visibleItemCount
        radius: Theme.radiusSmall
        color: wheel.colors.chipBackground
    }

    // The list (or path) view that the Tumbler's content item makes for its rows.
    function innerView() {
        for (let i = 0; i < contentItem.children.length; ++i) {
            if (contentItem.children[i].highlightMoveDuration !== undefined)
                return contentItem.children[i]
        }
        return null
    }

    // Shows the row of `value` (the nearest row when no row has it) without reporting it.
    function sync() {
        const row = Math.max(0, Math.min(count - 1, value - first))
        if (count > 0 && currentIndex !== row) {
            // Jump to the row: a page opens with its wheels in place, not scrolling.
            const view = innerView()
            const duration = view ? view.highlightMoveDuration : 0
            if (view)
                view.highlightMoveDuration = 0
            currentIndex = row
            if (view)
                view.highlightMoveDuration = duration
        }
    }
    // Later, so that the Tumbler has taken its rows (and reset its own index) first.
    // qmllint disable type
    // (Qt 6.4's type description of the Qt object lists callLater as a property, not a method.)
    onValueChanged: Qt.callLater(sync)
    onFirstChanged: Qt.callLater(sync)
    onCountChanged: Qt.callLater(sync)
    Component.onCompleted: Qt.callLater(sync)
    // qmllint enable type

    function report() {
        if (count > 0 && currentIndex >= 0 && first + currentIndex !== value)
            picked(first + currentIndex)
    }
    onCurrentIndexChanged: if (moving) report()
    onMovingChanged: if (!moving) report()
}
