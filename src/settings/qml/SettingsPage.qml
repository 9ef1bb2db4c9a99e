import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// A page of the settings pushed onto the app's stack: a back button and the title above a
// scrolling column on the page background. Children go into the column.
Page {
    id: page

    default property alias content: column.data
    readonly property bool dark: Material.theme === Material.Dark
    readonly property BrowsingColors colors: BrowsingColors { dark: page.dark }

    function dismiss() {
        if (page.StackView.view)
            page.StackView.view.pop()
    }

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
                onClicked: page.dismiss()
            }
            Label {
                objectName: "navigationTitle"
                text: page.title
                font.pixelSize: 20
                font.weight: Font.DemiBold
                color: page.colors.primaryText
                elide: Text.ElideRight
                Layout.fillWidth: true
                Layout.leftMargin: 16
            }
        }
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
            spacing: 16
        }
    }
}
