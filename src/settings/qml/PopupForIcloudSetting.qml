import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark

// The cloud page. Backup and sync to the user's own server come in a later version: until then
// the switch stays off and says so.
SettingsPage {
    id: page
    objectName: "popupForIcloudSetting"
    title: qsTrId("goToIcloudSettingPageAtSettingPage")

    AppStorage { id: cloudkitFuncStatus; key: "ALL_APP_cloudkitFuncStatus"; defaultValue: false }

    SettingsGroup {
        SettingsRow {
            objectName: "cloudSwitchRow"
            symbol: "icloud"
            title: cloudkitFuncStatus.value ? qsTrId("cloudFuncStatusOnTitleStringAtNotiSettingSubViewPage")
                                            : qsTrId("cloudFuncStatusOffTitleStringAtNotiSettingSubViewPage")
            chevron: false
            enabled: false
            trailing: TideSwitch {
                objectName: "cloudSwitch"
                checked: cloudkitFuncStatus.value
                enabled: false
            }
        }
    }
    Label {
        objectName: "cloudNote"
        Layout.fillWidth: true
        Layout.leftMargin: 6
        text: qsTrId("cloudArrivesLaterNoteString")
        wrapMode: Text.Wrap
        font.pixelSize: 13
        color: page.colors.secondaryText
    }
}
