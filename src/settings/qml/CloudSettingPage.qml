import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// The cloud page: the switch of backup and sync, the row with the code of the last problem, the
// account on the user's own server, the backup and restore buttons and the two times. With
// `asksFirst` the buttons ask before they act, and a changed account is confirmed here.
SettingsPage {
    id: page

    property bool asksFirst: false

    title: qsTrId("goToIcloudSettingPageAtSettingPage")

    AppStorage { id: cloudkitFuncStatus; key: "ALL_APP_cloudkitFuncStatus"; defaultValue: false }
    AppStorage { id: userCloudAccStatus; key: "ALL_APP_userCloudAccStatus"; defaultValue: false }
    AppStorage {
        id: idChanged
        key: "FUNC_CLOUD_cloudFuncNotActiveBecauseIdChanged"
        defaultValue: false
    }
    AppStorage { id: errorCode; key: "FUNC_CLOUD_errorStringForiCloudDataTask"; defaultValue: "" }
    AppStorage {
        id: lastManualBackup
        key: "FUNC_CLOUD_lastManuallyBackupTimeStringForiCloudDataTask"
        defaultValue: ""
    }
    AppStorage { id: lastSync; key: "FUNC_CLOUD_lastSyncTimeStringForiCloudDataTask"; defaultValue: "" }
    AppStorage {
        id: backupRunning
        key: "APP_CLOUDKITPAGE_loadingViewToggleForCloudkitPageBackupButton"
        defaultValue: false
    }
    AppStorage {
        id: downloadRunning
        key: "APP_CLOUDKITPAGE_loadingViewToggleForCloudkitPageDownloadButton"
        defaultValue: false
    }

    CloudPageModel {
        id: model
        onIdentityChangeNoticed: if (page.asksFirst) identityAlert.open()
    }

    SettingsGroup {
        SettingsRow {
            objectName: "cloudSwitchRow"
            symbol: "icloud"
            title: cloudkitFuncStatus.value ? qsTrId("cloudFuncStatusOnTitleStringAtNotiSettingSubViewPage")
                                            : qsTrId("cloudFuncStatusOffTitleStringAtNotiSettingSubViewPage")
            chevron: false
            onClicked: cloudSwitch.toggle()
            trailing: TideSwitch {
                id: cloudSwitch
                objectName: "cloudSwitch"
                checked: cloudkitFuncStatus.value
                onToggled: model.setSwitch(checked)
            }
        }
        // The code itself, as the system gives it. On the page that acts at once it leads to
        // the one that asks first, where a changed account is confirmed.
        SettingsRow {
            objectName: "cloudCodeRow"
            visible: !userCloudAccStatus.value || idChanged.value || errorCode.value !== ""
            symbol: "exclamationmark.circle"
            title: errorCode.value
            chevron: !page.asksFirst
            // By address, not by type: that page is this one, so naming its type here would make
            // the type contain itself.
            onClicked: if (chevron) page.StackView.view.push(Qt.resolvedUrl("IcloudSettingSubPage.qml"))
        }
    }

    // Where the records go: the user's own server, and whether it answers.
    SettingsGroup {
        objectName: "cloudAccountGroup"
        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 16
            spacing: Theme.spacing
            TextField {
                objectName: "cloudServerAddressField"
                Layout.fillWidth: true
                placeholderText: qsTrId("cloudServerAddressPlaceholderString")
                text: model.serverAddress
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
                onEditingFinished: model.serverAddress = text
                Accessible.name: qsTrId("cloudServerAddressString")
            }
            TextField {
                objectName: "cloudUserNameField"
                Layout.fillWidth: true
                placeholderText: qsTrId("cloudUserNameString")
                text: model.userName
                inputMethodHints: Qt.ImhNoAutoUppercase
                onEditingFinished: model.userName = text
            }
            TextField {
                objectName: "cloudPasswordField"
                Layout.fillWidth: true
                placeholderText: qsTrId("cloudPasswordString")
                echoMode: TextInput.Password
                inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                onEditingFinished: if (text !== "") model.setPassword(text)
            }
            RowLayout {
                Layout.fillWidth: true
                Button {
                    objectName: "cloudTestConnectionButton"
                    text: qsTrId("cloudTestConnectionButtonString")
                    flat: true
                    font.capitalization: Font.MixedCase
                    enabled: !model.testing
                    onClicked: model.testConnection()
                }
                BusyIndicator {
                    running: model.testing
                    visible: running
                    implicitWidth: 28
                    implicitHeight: 28
                }
                Item { Layout.fillWidth: true }
                Button {
                    objectName: "cloudTrustCertificateButton"
                    visible: model.untrustedFingerprint !== ""
                    text: qsTrId("cloudTrustCertificateButtonString")
                    flat: true
                    font.capitalization: Font.MixedCase
                    onClicked: model.trustCertificate()
                }
            }
            Label {
                objectName: "cloudConnectionMessage"
                Layout.fillWidth: true
                visible: text !== ""
                text: model.connectionMessage
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontSmall
                color: page.colors.secondaryText
            }
        }
    }

    SettingsGroup {
        visible: cloudkitFuncStatus.value
        SettingsRow {
            objectName: "cloudBackupRow"
            symbol: "icloud.and.arrow.up"
            title: qsTrId("uploadAllDataNowButtonAtCloudKitPage")
            detail: backupRunning.value && model.progressText !== "" ? model.progressText
                                                                     : qsTrId("uploadAllDataNowTextAtCloudKitPage")
            chevron: false
            enabled: !backupRunning.value && !downloadRunning.value
            trailing: BusyIndicator {
                running: backupRunning.value
                visible: running
                implicitWidth: 28
                implicitHeight: 28
            }
            onClicked: page.asksFirst ? uploadAlert.open() : model.backup()
        }
        SettingsRow {
            objectName: "cloudDownloadRow"
            symbol: "icloud.and.arrow.down"
            title: qsTrId("downloadAllDataNowButtonAtCloudKitPage")
            detail: downloadRunning.value && model.progressText !== "" ? model.progressText
                                                                       : qsTrId("downloadAllDataNowTextAtCloudKitPage")
            chevron: false
            enabled: !backupRunning.value && !downloadRunning.value
            trailing: BusyIndicator {
                running: downloadRunning.value
                visible: running
                implicitWidth: 28
                implicitHeight: 28
            }
            onClicked: page.asksFirst ? downloadAlert.open() : model.download()
        }
    }

    SettingsGroup {
        SettingsRow {
            objectName: "cloudLastBackupRow"
            title: qsTrId("lastManuallyBackupTimeStringAtCloudKitPage") + ": " + lastManualBackup.value
            chevron: false
            enabled: false
        }
        SettingsRow {
            objectName: "cloudLastSyncRow"
            title: qsTrId("lastSyncTimeStringAtCloudKitPage") + ": " + lastSync.value
            chevron: false
            enabled: false
        }
    }

    // The alerts draw over the window; this holder keeps them out of the page's layout.
    Item {
        Layout.preferredHeight: 0
        AlertDialog {
            id: uploadAlert
            objectName: "alertForUploadAllData"
            titleText: qsTrId("alert title text for upload all data at cloudkit page")
            message: qsTrId("message text for upload all data at cloudkit page")
            buttonText: qsTrId("button label text for upload all data at cloudkit page")
            cancelText: qsTrId("alertButtonCancelStringForForDeleteThisEventAtCardView")
            darkScheme: page.dark
            onAccepted: model.backup()
        }
        AlertDialog {
            id: downloadAlert
            objectName: "alertForDownloadAllData"
            titleText: qsTrId("alert title text for download all data at cloudkit page")
            message: qsTrId("message text for download all data at cloudkit page")
            buttonText: qsTrId("button label text for download all data at cloudkit page")
            cancelText: qsTrId("alertButtonCancelStringForForDeleteThisEventAtCardView")
            darkScheme: page.dark
            onAccepted: model.download()
        }
        AlertDialog {
            id: identityAlert
            objectName: "alertForCloudFuncNotActiveBecauseIdChanged"
            titleText: qsTrId("alert title text for cloud func not active because id changed at cloudkit page")
            message: qsTrId("message text for cloud func not active because id changed at cloudkit page")
            buttonText: qsTrId("button label text for cloud func not active because id changed at cloudkit page")
            darkScheme: page.dark
            closePolicy: Popup.NoAutoClose
            onAccepted: model.confirmIdentityChange()
        }
    }

    // The loading overlay while the switch's check runs.
    Rectangle {
        parent: page.contentItem
        anchors.fill: parent
        visible: model.loadingViewShowUp
        color: Theme.colors(page.dark).scrim
        MouseArea { anchors.fill: parent }
        BusyIndicator {
            anchors.centerIn: parent
            running: parent.visible
        }
    }
}
