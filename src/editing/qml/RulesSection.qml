import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// One group of a rule page: an optional header above a rounded card that stacks its children.
ColumnLayout {
    id: section
    property string title: ""
    property var colors
    default property alias content: body.data
    spacing: 6

    Label {
        visible: section.title !== ""
        text: section.title
        color: section.colors.secondaryText
        font.pixelSize: 13
        Layout.leftMargin: 12
        Layout.fillWidth: true
        elide: Text.ElideRight
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: body.implicitHeight + 24
        radius: 12
        color: section.colors.cardBackground
        border.color: section.colors.cardBorder
        ColumnLayout {
            id: body
            x: 12
            y: 12
            width: parent.width - 24
            spacing: 10
        }
    }
}
