import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Components

// The repeat type as four segments: every day, week, month, year (types 1 to 4). Type 0 lights
// none of them.
Rectangle {
    id: picker
    property int type: 0
    property var colors
    signal picked(int type)

    implicitHeight: 40
    radius: 10
    color: colors.chipBackground

    RowLayout {
        anchors.fill: parent
        anchors.margins: 3
        spacing: 3
        Repeater {
            model: 4
            AbstractButton {
                id: segment
                required property int index
                readonly property int segmentType: index + 1
                readonly property bool current: picker.type === segmentType
                objectName: "typeSegment" + segmentType
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                text: qsTrId("addNewEventPagePickerForEventType" + segmentType)
                background: Rectangle {
                    radius: Theme.radiusSmall
                    color: segment.current ? picker.Material.accent : "transparent"
                    opacity: segment.pressed ? 0.7 : 1
                }
                contentItem: Label {
                    text: segment.text
                    font.pixelSize: Theme.fontSubhead
                    font.weight: segment.current ? Font.DemiBold : Font.Normal
                    color: segment.current ? picker.colors.selectedText : picker.colors.primaryText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
                onClicked: picker.picked(segmentType)
            }
        }
    }
}
