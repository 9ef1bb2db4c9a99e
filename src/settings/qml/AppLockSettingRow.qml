import QtQuick
import QtQuick.Controls
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// The settings row of the app lock: a switch for the wish to lock the app at its next launch.
// Dimmed and off limits while the system has no way to authenticate its owner, with a note why.
SettingsRow {
    id: row
    objectName: "appLockSettingRow"

    readonly property alias model: lock
    AppLockModel { id: lock }

    symbol: "lock"
    title: qsTrId("appLockSettingRowTitleString")
    detail: lock.available ? qsTrId("appLockSettingRowDetailString")
                           : qsTrId("appLockSettingRowUnavailableString")
    dimmed: !lock.available
    chevron: false
    trailing: TideSwitch {
        id: appLockSwitch
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
