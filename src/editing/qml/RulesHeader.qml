import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// The header of a rule page: an optional leading button, the title, and the page's buttons at
// the trailing end (put them in as children).
ToolBar {
    id: header
    property string title
    property string leadingSymbol: ""
    property var colors
    default property alias trailing: buttons.data
    signal leadingClicked()

    Material.elevation: 0

    background: null

    RowLayout {
        anchors.fill: parent
        anchors.rightMargin: 4
        spacing: 0
        RowButton {
            objectName: "leadingButton"
            visible: header.leadingSymbol !== ""
            symbol: header.leadingSymbol
            tint: header.colors.primaryText
            onClicked: header.leadingClicked()
        }
        Label {
            objectName: "navigationTitle"
            text: header.title
            font.pixelSize: 20
            font.weight: Font.DemiBold
            color: header.colors.primaryText
            elide: Text.ElideRight
            Layout.fillWidth: true
            Layout.leftMargin: header.leadingSymbol !== "" ? 4 : 16
        }
        RowLayout {
            id: buttons
            spacing: 0
        }
    }
}
