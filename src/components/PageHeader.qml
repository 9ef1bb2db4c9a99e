import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// The header of a pushed page: an optional leading button (its symbol in `leadingSymbol`), the
// title, and the page's own buttons at the trailing end (put them in as children).
ToolBar {
    id: header
    property string title
    property string leadingSymbol: ""
    property ThemeColors colors
    // Room at the bar's ends, and before the title: `titleInset` without a leading button,
    // less after one.
    property int leadingMargin: Theme.spacingSmall
    property int trailingMargin: Theme.spacingSmall
    property int titleInset: Theme.spacingMedium
    property int titleMargin: header.leadingSymbol !== "" ? Theme.spacingSmall : header.titleInset
    default property alias trailing: buttons.data
    signal leadingClicked()

    Material.elevation: 0

    background: null

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: header.leadingMargin
        anchors.rightMargin: header.trailingMargin
        spacing: 0
        RowButton {
            objectName: "backButton"
            visible: header.leadingSymbol !== ""
            symbol: header.leadingSymbol
            tint: header.colors.primaryText
            onClicked: header.leadingClicked()
        }
        Label {
            objectName: "navigationTitle"
            text: header.title
            font.pixelSize: Theme.fontHeader
            font.weight: Font.DemiBold
            color: header.colors.primaryText
            elide: Text.ElideRight
            Layout.fillWidth: true
            Layout.leftMargin: header.titleMargin
        }
        RowLayout {
            id: buttons
            spacing: 0
        }
    }
}
