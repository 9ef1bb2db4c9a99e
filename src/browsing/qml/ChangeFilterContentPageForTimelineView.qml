import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The filter page: the shared filter choices under the page's navigation title. Pushed onto a
// StackView, its back button pops it.
Page {
    id: page
    objectName: "changeFilterContentPageForTimelineView"
    title: qsTrId("filterContentPageNavigationTitleStringAtFilterPage")

    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(page.dark)
    background: PageBackground {}

    header: ToolBar {
        Material.elevation: 0
        background: null
        RowLayout {
            anchors.fill: parent
            spacing: 0
            RowButton {
                objectName: "backButton"
                visible: page.StackView.view !== null && page.StackView.index > 0
                symbol: "chevron.left"
                tint: page.colors.primaryText
                onClicked: page.StackView.view.pop()
            }
            Label {
                objectName: "navigationTitle"
                text: page.title
                font.pixelSize: Theme.fontHeader
                font.weight: Font.DemiBold
                color: page.colors.primaryText
                Layout.fillWidth: true
                Layout.leftMargin: 16
            }
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: filters.implicitHeight + 32
        clip: true
        FilterSettingsContent {
            id: filters
            x: 16
            y: 8
            width: parent.width - 32
        }
    }
}
