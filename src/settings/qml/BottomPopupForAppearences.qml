import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Browsing
import TideMark.Settings
import TideMark.Components

// The appearance choice from the bottom of the screen: follow the system, always light or always
// dark. A circle slides between the sun's and the moon's colour to show the choice; the window
// changes at once.
Popup {
    id: popup
    objectName: "bottomPopupForAppearences"

    required property TimelineActions actions
    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(popup.dark)

    readonly property color sun: Theme.named("Sun", dark)
    readonly property color moon: Theme.named("Moon", dark)

    parent: Overlay.overlay
    modal: true
    focus: true
    width: parent ? Math.min(parent.width, 480) : 390
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? parent.height - height : 0
    padding: 20
    topPadding: 12
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    // Both ends are given: an animation that ended off screen must not leave the popup there.
    enter: Transition { NumberAnimation { property: "y"; from: popup.parent ? popup.parent.height : 800; to: popup.parent ? popup.parent.height - popup.height : 0; duration: 220; easing.type: Easing.OutCubic } }
    exit: Transition { NumberAnimation { property: "y"; to: popup.parent ? popup.parent.height : 800; duration: 180 } }

    background: Rectangle {
        color: Theme.named("ThemeBG", popup.dark)
        radius: 22
        Rectangle { // square off the bottom corners
            anchors.bottom: parent.bottom
            width: parent.width
            height: 22
            color: parent.color
        }
    }

    height: popup.contentItem.implicitHeight + topPadding + bottomPadding
    contentItem: ColumnLayout {
        spacing: Theme.spacingMedium
        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            width: 40
            height: 5
            radius: 3
            color: popup.colors.cardBorder
        }
        Label {
            text: qsTrId("lightAndDarkMode")
            font.pixelSize: Theme.fontHeader
            font.weight: Font.DemiBold
            color: popup.colors.primaryText
        }
        // The sky: the circle stands left as the sun, right as the moon, in the middle for
        // "follow the system".
        Rectangle {
            id: sky
            Layout.fillWidth: true
            implicitHeight: 64
            radius: 32
            color: popup.colors.cardBackground
            border.color: popup.colors.cardBorder
            readonly property int scheme: popup.actions.colorScheme
            readonly property real position: scheme === TimelineActions.AlwaysLight ? 0
                                             : scheme === TimelineActions.AlwaysDark ? 1 : 0.5
            Rectangle {
                objectName: "themeCircle"
                width: 48
                height: 48
                radius: 24
                y: 8
                x: 8 + sky.position * (sky.width - width - 16)
                color: sky.scheme === TimelineActions.AlwaysDark ? popup.moon
                     : sky.scheme === TimelineActions.AlwaysLight ? popup.sun
                     : Qt.rgba((popup.sun.r + popup.moon.r) / 2, (popup.sun.g + popup.moon.g) / 2,
                               (popup.sun.b + popup.moon.b) / 2, 1)
                Behavior on x { NumberAnimation { duration: 320; easing.type: Easing.OutBack } }
                Behavior on color { ColorAnimation { duration: 320 } }
            }
        }
        ColorSchemeChoices {
            actions: popup.actions
            colors: popup.colors
            dark: popup.dark
            chipMark: true
        }
    }
}
