import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// A rounded card that holds settings rows, one under the other, with a heading above it.
ColumnLayout {
    id: group

    property string heading: ""
    default property alias rows: column.data
    readonly property bool dark: Material.theme === Material.Dark
    BrowsingColors { id: colors; dark: group.dark }

    Layout.fillWidth: true
    spacing: 6

    Label {
        visible: group.heading !== ""
        text: group.heading
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: colors.secondaryText
        Layout.leftMargin: 6
        Layout.fillWidth: true
        elide: Text.ElideRight
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: column.implicitHeight
        radius: 14
        color: colors.cardBackground
        border.color: colors.cardBorder
        clip: true
        ColumnLayout {
            id: column
            anchors.left: parent.left
            anchors.right: parent.right
            spacing: 0
        }
    }
}
