import QtQuick
import QtQuick.Layouts
import TideMark.Components

// One event: its colour, title, day count (or the next date of a repeating event) and rule.
// The lock-screen form is one compact line pair in a single colour.
Item {
    id: face

    required property var model
    required property var colors
    readonly property var event: model.event
    readonly property bool lock: model.size === "lock"
    readonly property bool medium: model.size === "medium"
    readonly property color tint: lock ? colors.primaryText
                                       : Theme.named(event.colorName || "default", model.dark)
    // The count of a one-off date, else the next date of a repeating one.
    readonly property string bigText: event.isToday ? event.dayCountUnit
                                    : event.dayCountNumber !== "" ? event.dayCountNumber
                                    : (event.nextDateText || event.nextDate || "")
    readonly property string bigUnit: event.isToday ? "" : event.dayCountNumber !== "" ? event.dayCountUnit : ""
    readonly property string smallText: event.dayCountNumber !== "" || event.isToday
                                        ? (event.nextDate || "") : (event.typeText || "")

    GridLayout {
        anchors.fill: parent
        columns: face.medium ? 2 : 1
        rowSpacing: face.lock ? 0 : 4
        columnSpacing: 12

        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: face.lock ? 0 : 6

            Rectangle {
                visible: !face.lock
                width: 26
                height: 6
                radius: 3
                color: face.tint
            }
            Text {
                Layout.fillWidth: true
                text: face.event.title || ""
                color: face.colors.primaryText
                font.pixelSize: face.lock ? 13 : 17
                font.weight: Font.DemiBold
                maximumLineCount: face.lock ? 1 : 2
                wrapMode: Text.Wrap
                elide: Text.ElideRight
            }
            Text {
                visible: face.medium
                Layout.fillWidth: true
                text: face.event.detailsText || face.event.datesText || ""
                color: face.colors.secondaryText
                font.pixelSize: Theme.fontSmall
                elide: Text.ElideRight
            }
            Item { Layout.fillHeight: true; visible: !face.lock }
            Row {
                visible: !face.medium
                Layout.fillWidth: true
                spacing: 3
                Text {
                    width: Math.min(implicitWidth, face.width - parent.children[1].implicitWidth - 3)
                    text: face.bigText
                    color: face.tint
                    font.pixelSize: face.lock ? 16 : 34
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: face.lock ? 11 : 16
                    font.weight: Font.Bold
                }
                Text {
                    anchors.baseline: parent.children[0].baseline
                    text: face.bigUnit
                    color: face.colors.secondaryText
                    font.pixelSize: face.lock ? 11 : 14
                }
            }
            Text {
                visible: !face.medium && !face.lock
                Layout.fillWidth: true
                text: face.smallText
                color: face.colors.secondaryText
                font.pixelSize: Theme.fontCaption
                elide: Text.ElideRight
            }
        }

        ColumnLayout {
            visible: face.medium
            Layout.alignment: Qt.AlignRight | Qt.AlignVCenter
            spacing: 2
            Row {
                Layout.alignment: Qt.AlignRight
                spacing: 3
                Text {
                    id: mediumBig
                    width: Math.min(implicitWidth, face.width / 2)
                    text: face.bigText
                    color: face.tint
                    font.pixelSize: 44
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 18
                    font.weight: Font.Bold
                }
                Text {
                    anchors.baseline: mediumBig.baseline
                    text: face.bigUnit
                    color: face.colors.secondaryText
                    font.pixelSize: Theme.fontBody
                }
            }
            Text {
                Layout.alignment: Qt.AlignRight
                text: face.smallText
                color: face.colors.secondaryText
                font.pixelSize: Theme.fontSmall
            }
        }
    }
}
