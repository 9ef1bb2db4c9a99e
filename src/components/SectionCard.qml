import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A titled group of rows on a rounded card surface (put the rows in as children). The card's
// rows reach its edge and draw their own padding; `padded` (the rule pages) insets them instead,
// spaces them and gives the group a lighter title.
ColumnLayout {
    id: section
    property string title
    property ThemeColors colors
    property bool padded: false
    property int titleMargin: padded ? Theme.spacingMedium : Theme.spacingLarge
    default property alias content: body.data
    readonly property int inset: padded ? Theme.spacingMedium : 0
    spacing: 6

    Label {
        visible: section.title !== ""
        text: section.title
        font.pixelSize: Theme.fontSmall
        font.weight: section.padded ? Font.Normal : Font.DemiBold
        color: section.colors.secondaryText
        elide: Text.ElideRight
        Layout.leftMargin: section.titleMargin
        Layout.fillWidth: true
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: body.implicitHeight + 2 * section.inset
        radius: section.padded ? Theme.radius : Theme.radiusCard
        color: section.colors.cardBackground
        border.color: section.colors.cardBorder
        border.width: 1
        // The card clips its edge-to-edge rows to its round corners. Padded rows stay inside, and
        // a clip would also cut off the drags of a rule page's wheels that leave the card.
        clip: !section.padded
        ColumnLayout {
            id: body
            x: section.inset
            y: section.inset
            width: parent.width - 2 * section.inset
            spacing: section.padded ? 10 : 0
        }
    }
}
