import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A titled group of rows on a rounded card surface (put the rows in as children).
ColumnLayout {
    id: section
    property string title
    property var colors
    default property alias rows: body.data
    spacing: 6

    Label {
        visible: section.title !== ""
        text: section.title
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: section.colors.secondaryText
        Layout.leftMargin: 16
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: body.implicitHeight
        radius: 14
        color: section.colors.cardBackground
        border.color: section.colors.cardBorder
        border.width: 1
        clip: true
        ColumnLayout {
            id: body
            width: parent.width
            spacing: 0
        }
    }
}
