import QtQuick
import QtQuick.Layouts
import TideMark.Components

// The large widget: the events of the chosen kind, nearest first, one line each.
Item {
    id: list

    required property var model
    required property var colors

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing

        Text {
            text: list.model.kindName(list.model.kind)
            color: list.colors.secondaryText
            font.pixelSize: Theme.fontSmall
            font.weight: Font.DemiBold
        }
        Text {
            visible: list.model.rows.length === 0
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: qsTrId("widgetNoEventsOfKindText")
            color: list.colors.secondaryText
            font.pixelSize: Theme.fontSubhead
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        ListView {
            visible: list.model.rows.length > 0
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            interactive: false
            spacing: 6
            model: list.model.rows
            delegate: RowLayout {
                required property var modelData
                width: ListView.view.width
                spacing: Theme.spacing
                Rectangle {
                    width: 8
                    height: 8
                    radius: 4
                    color: Theme.named(modelData.colorName || "default", list.model.dark)
                }
                Text {
                    Layout.fillWidth: true
                    text: modelData.title
                    color: list.colors.primaryText
                    font.pixelSize: Theme.fontBody
                    elide: Text.ElideRight
                }
                Text {
                    text: modelData.isToday ? modelData.dayCountUnit
                        : modelData.dayCountNumber !== "" ? modelData.dayCountNumber + modelData.dayCountUnit
                        : (modelData.nextDateText || modelData.nextDate)
                    color: list.colors.secondaryText
                    font.pixelSize: Theme.fontSubhead
                }
            }
        }
    }
}
