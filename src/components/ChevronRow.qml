import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// One row of a section card: a label, an optional value and a chevron.right; a tap emits
// clicked(). A row without chevron shows a value only.
ItemDelegate {
    id: row
    property string label
    property string value
    property bool chevron: true
    property bool separator: true
    property ThemeColors colors
    Layout.fillWidth: true
    implicitHeight: Math.max(50, row.contentItem.implicitHeight + 20)
    hoverEnabled: chevron
    focusPolicy: Qt.NoFocus

    contentItem: RowLayout {
        spacing: 8
        Label {
            text: row.label
            font.pixelSize: 16
            color: row.colors.primaryText
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        Label {
            objectName: "rowValue"
            visible: text !== ""
            text: row.value
            font.pixelSize: 15
            color: row.colors.secondaryText
            elide: Text.ElideRight
            Layout.maximumWidth: row.width * 0.5
        }
        Label {
            visible: row.chevron
            text: Symbols.glyph("chevron.right")
            font.family: Symbols.fontFamily
            font.pixelSize: 22
            color: row.colors.secondaryText
        }
    }
    Rectangle {
        visible: row.separator
        x: 16
        width: parent.width - 16
        height: 1
        anchors.bottom: parent.bottom
        color: row.colors.cardBorder
    }
}
