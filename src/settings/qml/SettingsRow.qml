import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Components

// One row of a settings group: a symbol, a title, an optional second line and, at the end, a
// chevron (a row that opens something) or whatever `trailing` holds (a switch, a check).
ItemDelegate {
    id: row

    property string symbol: ""
    property string title: ""
    property string detail: ""
    property bool chevron: true
    property alias trailing: trailingSlot.data
    /// Drawn faint but still usable (e.g. a setting the system doesn't allow yet).
    property bool dimmed: false
    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(row.dark)

    Layout.fillWidth: true
    implicitHeight: Math.max(56, row.contentItem.implicitHeight + 20)
    leftPadding: 16
    rightPadding: 12

    contentItem: RowLayout {
        spacing: 14
        opacity: row.dimmed ? 0.28 : 1
        Label {
            visible: row.symbol !== ""
            text: Symbols.glyph(row.symbol)
            font.family: Symbols.fontFamily
            font.pixelSize: Theme.fontHeadline
            color: row.colors.symbolTint
            Layout.preferredWidth: 24
            horizontalAlignment: Text.AlignHCenter
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Label {
                objectName: "rowTitle"
                Layout.fillWidth: true
                text: row.title
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontBodyLarge
                color: row.colors.primaryText
            }
            Label {
                Layout.fillWidth: true
                visible: row.detail !== ""
                text: row.detail
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontSmall
                color: row.colors.secondaryText
            }
        }
        Item {
            id: trailingSlot
            implicitWidth: childrenRect.width
            implicitHeight: childrenRect.height
            Layout.alignment: Qt.AlignVCenter
        }
        Label {
            visible: row.chevron
            text: Symbols.glyph("chevron.right")
            font.family: Symbols.fontFamily
            font.pixelSize: Theme.fontHeader
            color: row.colors.secondaryText
        }
    }
}
