import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Components

// A page of the settings pushed onto the app's stack: a back button and the title above a
// scrolling column on the page background. Children go into the column.
Page {
    id: page

    default property alias content: column.data
    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(page.dark)

    function dismiss() {
        if (page.StackView.view)
            page.StackView.view.pop()
    }

    background: PageBackground {}

    header: PageHeader {
        title: page.title
        colors: page.colors
        leadingSymbol: page.StackView.view !== null && page.StackView.index > 0 ? "chevron.left" : ""
        leadingMargin: 0
        trailingMargin: 0
        titleMargin: Theme.spacingLarge
        onLeadingClicked: page.dismiss()
    }

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 32
        clip: true
        ColumnLayout {
            id: column
            x: 16
            y: 8
            width: parent.width - 32
            spacing: Theme.spacingLarge
        }
    }
}
