import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Components

// A rounded card that holds settings rows, one under the other, with a heading above it.
SectionCard {
    id: group

    property alias heading: group.title
    readonly property bool dark: Material.theme === Material.Dark

    colors: Theme.colors(group.dark)
    titleMargin: 6
    Layout.fillWidth: true
}
