import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The settings tab until the full settings screen lands: the reminders page, and a plain note
// that the other settings follow.
Item {
    id: view
    objectName: "settingPlaceholderView"

    /// Asks the main screen to show a page (pushed onto the app's page stack).
    signal pageRequested(string url, var properties)

    readonly property bool dark: Material.theme === Material.Dark
    BrowsingColors { id: colors; dark: view.dark }

    ColumnLayout {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 16
        spacing: 8

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: remindersRow.implicitHeight
            radius: 14
            color: colors.cardBackground
            border.color: colors.cardBorder
            ItemDelegate {
                id: remindersRow
                objectName: "remindersRow"
                anchors.left: parent.left
                anchors.right: parent.right
                contentItem: RowLayout {
                    spacing: 12
                    Label {
                        text: Symbols.glyph("bell.badge")
                        font.family: Symbols.fontFamily
                        font.pixelSize: 24
                        color: colors.symbolTint
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 2
                        Label {
                            Layout.fillWidth: true
                            text: qsTrId("settingsRemindersRowString")
                            font.pixelSize: 16
                            color: colors.primaryText
                        }
                        Label {
                            Layout.fillWidth: true
                            text: qsTrId("settingsRemindersRowDetailString")
                            wrapMode: Text.Wrap
                            font.pixelSize: 13
                            color: colors.secondaryText
                        }
                    }
                    Label {
                        text: Symbols.glyph("chevron.right")
                        font.family: Symbols.fontFamily
                        font.pixelSize: 20
                        color: colors.secondaryText
                    }
                }
                onClicked: {
                    Haptics.impact()
                    view.pageRequested("SettingViewSubViewForNotiSetting.qml", {})
                }
            }
        }

        AppLockSettingRow {
            Layout.fillWidth: true
        }
    }

    ColumnLayout {
        anchors.centerIn: parent
        width: parent.width - 64
        spacing: 12
        Label {
            Layout.alignment: Qt.AlignHCenter
            text: Symbols.glyph("gearshape")
            font.family: Symbols.fontFamily
            font.pixelSize: 48
            opacity: 0.5
        }
        Label {
            objectName: "settingsComingLabel"
            Layout.fillWidth: true
            text: qsTrId("settingsComingString")
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 17
            opacity: 0.75
        }
    }
}
