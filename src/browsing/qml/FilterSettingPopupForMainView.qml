import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Browsing
import TideMark.Components

// The filter choices in a popup from the bottom of the main screen. Closes on a tap outside. The
// popup lives on the window's overlay, so the opener hands it its theme.
Popup {
    id: popup
    objectName: "filterSettingPopupForMainView"

    property bool dark: false
    Material.theme: dark ? Material.Dark : Material.Light
    readonly property ThemeColors colors: Theme.colors(popup.dark)

    parent: Overlay.overlay
    modal: true
    width: parent ? parent.width : 390
    height: parent ? Math.min(parent.height * 0.86, column.implicitHeight + 48) : 700
    y: parent ? parent.height - height : 0
    padding: 0
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    // Both ends are given: an animation that ended off screen must not leave the popup there.
    enter: Transition { NumberAnimation { property: "y"; from: popup.parent ? popup.parent.height : 800; to: popup.parent ? popup.parent.height - popup.height : 0; duration: 220; easing.type: Easing.OutCubic } }
    exit: Transition { NumberAnimation { property: "y"; to: popup.parent ? popup.parent.height : 800; duration: 180 } }

    background: Rectangle {
        color: popup.colors.pageBackground
        radius: 20
        Rectangle { // square off the bottom corners
            anchors.bottom: parent.bottom
            width: parent.width
            height: 20
            color: parent.color
        }
    }

    contentItem: Flickable {
        contentHeight: column.implicitHeight + 32
        clip: true
        ColumnLayout {
            id: column
            x: 16
            y: 12
            width: parent.width - 32
            spacing: Theme.spacingSmall
            Rectangle {
                Layout.alignment: Qt.AlignHCenter
                width: 40
                height: 5
                radius: 3
                color: popup.colors.cardBorder
            }
            Label {
                text: qsTrId("filterContentPageNavigationTitleStringAtFilterPage")
                font.pixelSize: Theme.fontHeader
                font.weight: Font.DemiBold
                color: popup.colors.primaryText
                Layout.topMargin: 6
            }
            FilterSettingsContent {
                Layout.fillWidth: true
            }
        }
    }
}
