import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Components

// The page background choice: the plain page colour or the app's tide picture, each shown as a
// small preview; the choice holds for every page at once.
Popup {
    id: popup
    objectName: "popupForBackgroundImageSetting"

    readonly property var backgroundImage: ["noneBlankBackgroungImage", "brandNewMainViewBackgroundImage"]
    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(popup.dark)
    AppStorage {
        id: allAppBackgroundSettingString
        key: "UI_BGIMAGE_allAppBackgroundSettingString"
        defaultValue: "noneBlankBackgroungImage"
    }

    parent: Overlay.overlay
    modal: true
    focus: true
    width: parent ? Math.min(parent.width - 32, 420) : 358
    x: parent ? (parent.width - width) / 2 : 16
    y: parent ? (parent.height - height) / 2 : 200
    padding: 20
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    background: Rectangle { color: popup.colors.pageBackground; radius: 22 }

    contentItem: ColumnLayout {
        spacing: 14
        Label {
            text: qsTrId("changeBackgroundImageMenuAtBrandNewSettingView")
            font.pixelSize: Theme.fontHeader
            font.weight: Font.DemiBold
            color: popup.colors.primaryText
        }
        RowLayout {
            spacing: 14
            Repeater {
                model: popup.backgroundImage
                delegate: AbstractButton {
                    id: choice
                    required property string modelData
                    required property int index
                    readonly property bool current: allAppBackgroundSettingString.value === modelData
                    objectName: "backgroundChoice" + index
                    Layout.fillWidth: true
                    implicitHeight: 230
                    onClicked: {
                        Haptics.impact()
                        allAppBackgroundSettingString.value = modelData
                    }
                    contentItem: ColumnLayout {
                        spacing: Theme.spacing
                        Rectangle {
                            Layout.fillWidth: true
                            Layout.fillHeight: true
                            radius: Theme.radiusCard
                            clip: true
                            color: popup.colors.pageBackground
                            border.width: choice.current ? 3 : 1
                            border.color: choice.current ? Theme.named("tabBarIconColorForSelected", popup.dark)
                                                         : popup.colors.cardBorder
                            Image {
                                anchors.fill: parent
                                anchors.margins: parent.border.width
                                visible: choice.index === 1
                                source: visible ? "qrc:/images/brandNewMainViewBackgroundImage-" + (popup.dark ? "dark" : "light") + ".png" : ""
                                sourceSize.width: 240
                                fillMode: Image.PreserveAspectCrop
                                asynchronous: true
                            }
                            Label {
                                anchors.right: parent.right
                                anchors.bottom: parent.bottom
                                anchors.margins: Theme.spacing
                                visible: choice.current
                                text: Symbols.glyph("checkmark")
                                font.family: Symbols.fontFamily
                                font.pixelSize: Theme.fontHeadline
                                color: Theme.named("tabBarIconColorForSelected", popup.dark)
                            }
                        }
                        Label {
                            Layout.fillWidth: true
                            horizontalAlignment: Text.AlignHCenter
                            text: choice.index === 0 ? qsTrId("backgroundPlainStringAtBackgroundPopup")
                                                     : qsTrId("backgroundTideStringAtBackgroundPopup")
                            color: popup.colors.primaryText
                            font.pixelSize: Theme.fontSubhead
                        }
                    }
                }
            }
        }
    }
}
