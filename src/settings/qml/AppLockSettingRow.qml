import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The settings row of the app lock: a switch for the wish to lock the app at its next launch.
// Dimmed and off limits while the system has no way to authenticate its owner, with a note why.
Rectangle {
    id: row
    objectName: "appLockSettingRow"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias model: lock

    implicitHeight: content.implicitHeight + 24
    radius: 14
    color: colors.cardBackground
    border.color: colors.cardBorder

    BrowsingColors { id: colors; dark: row.dark }
    AppLockModel { id: lock }

    RowLayout {
        id: content
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 8
        anchors.topMargin: 12
        anchors.bottomMargin: 12
        spacing: 12
        opacity: lock.available ? 1 : 0.4

        Label {
            Layout.alignment: Qt.AlignTop
            text: Symbols.glyph("lock")
            font.family: Symbols.fontFamily
            font.pixelSize: 22
            color: colors.symbolTint
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Label {
                Layout.fillWidth: true
                text: qsTrId("appLockSettingRowTitleString")
                wrapMode: Text.Wrap
                font.pixelSize: 16
                color: colors.primaryText
            }
            Label {
                objectName: "appLockSettingDetail"
                Layout.fillWidth: true
                text: lock.available ? qsTrId("appLockSettingRowDetailString")
                                     : qsTrId("appLockSettingRowUnavailableString")
                wrapMode: Text.Wrap
                font.pixelSize: 13
                color: colors.secondaryText
            }
        }
        TideSwitch {
            objectName: "appLockSwitch"
            enabled: lock.available
            checked: lock.lockAtNextLaunch
            onToggled: {
                Haptics.impact()
                lock.lockAtNextLaunch = checked
                checked = Qt.binding(() => lock.lockAtNextLaunch)
            }
        }
    }
}
