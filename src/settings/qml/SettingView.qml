import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark
import TideMark.Components

// The settings tab: reminders, appearance, background, cloud, app lock, feedback, the app's
// pages (help, about, sharing, support), its links and a footer with the version.
Item {
    id: view
    objectName: "settingView"

    /// Asks the main screen to show a page (pushed onto the app's page stack).
    signal pageRequested(string url, var properties)
    /// Asks the window to show a short note at the top.
    signal noteRequested(string text)

    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(view.dark)

    NotiSettingModel { id: noti }
    SettingViewModel { id: settingsModel }
    TimelineActions { id: appearance }
    AppStorage { id: alwaysLight; key: "colorSchemeSetToAlwaysLight"; defaultValue: false }
    AppStorage { id: alwaysDark; key: "colorSchemeSetToAlwaysDark"; defaultValue: false }
    AppStorage { id: followSystem; key: "colorSchemeSetToFollowSystem"; defaultValue: false }
    AppStorage {
        id: background
        key: "UI_BGIMAGE_allAppBackgroundSettingString"
        defaultValue: "noneBlankBackgroungImage"
    }

    // Asks the system about notifications each time the tab comes on screen.
    onVisibleChanged: if (visible) noti.appeared()
    Component.onCompleted: if (visible) noti.appeared()

    function open(fileName) {
        Haptics.impact()
        view.pageRequested(fileName, {})
    }

    Flickable {
        id: flick
        anchors.fill: parent
        contentHeight: column.implicitHeight + 40
        clip: true
        ColumnLayout {
            id: column
            x: 16
            y: 8
            width: flick.width - 32
            spacing: 18

            Label {
                objectName: "settingsTitle"
                text: qsTrId("settingVieNaviLinkStringBigTitleAtBrandNewMainView")
                font.pixelSize: 30
                font.bold: true
                color: view.colors.primaryText
                Layout.topMargin: 8
            }

            SettingsGroup {
                SettingsRow {
                    objectName: "remindersRow"
                    symbol: noti.switchOn ? "bell.badge" : "bell.slash"
                    title: noti.switchOn ? qsTrId("notiStatusOnTitleStringAtNotiSettingSubViewPage")
                                         : qsTrId("notiStatusOffTitleStringAtNotiSettingSubViewPage")
                    dimmed: !noti.authorized
                    chevron: false
                    onClicked: view.open("SettingViewSubViewForNotiSetting.qml")
                    trailing: TideSwitch {
                        objectName: "remindersSwitch"
                        checked: noti.switchOn
                        onToggled: {
                            Haptics.impact()
                            noti.switchOn = checked
                            checked = Qt.binding(() => noti.switchOn)
                        }
                    }
                }
                SettingsRow {
                    objectName: "requestAuthorizationRow"
                    visible: !noti.authorized
                    symbol: "exclamationmark.circle"
                    title: qsTrId("requestAuthorizationStringAtNotiSettingSubViewPage")
                    detail: noti.systemSettingsAvailable ? "" : qsTrId("notiNoSystemSettingsString")
                    enabled: noti.systemSettingsAvailable
                    chevron: noti.systemSettingsAvailable
                    onClicked: {
                        Haptics.impact()
                        noti.openSystemSettings()
                    }
                }
            }

            SettingsGroup {
                SettingsRow {
                    objectName: "appearanceRow"
                    symbol: alwaysLight.value ? "sun.min" : alwaysDark.value ? "moon.zzz" : "gearshape"
                    title: qsTrId("lightAndDarkMode")
                    detail: alwaysLight.value ? qsTrId("lightAndDarkModeAlwaysLight")
                          : alwaysDark.value ? qsTrId("lightAndDarkModeAlwaysDark")
                          : followSystem.value ? qsTrId("lightAndDarkModeAUTO") : ""
                    onClicked: {
                        Haptics.impact()
                        appearancePopup.open()
                    }
                }
                SettingsRow {
                    objectName: "backgroundRow"
                    symbol: "photo.stack"
                    title: qsTrId("changeBackgroundImageMenuAtBrandNewSettingView")
                    detail: background.value === "brandNewMainViewBackgroundImage"
                            ? qsTrId("backgroundTideStringAtBackgroundPopup")
                            : qsTrId("backgroundPlainStringAtBackgroundPopup")
                    onClicked: {
                        Haptics.impact()
                        backgroundPopup.open()
                    }
                }
                SettingsRow {
                    objectName: "cloudRow"
                    symbol: "icloud"
                    title: qsTrId("goToIcloudSettingPageAtSettingPage")
                    onClicked: view.open("PopupForIcloudSetting.qml")
                }
                AppLockSettingRow {}
            }

            SettingsGroup {
                heading: qsTrId("calendarFileGroupTitle")
                SettingsRow {
                    objectName: "exportCalendarRow"
                    symbol: "square.and.arrow.up"
                    title: qsTrId("exportToCalendarFileRow")
                    onClicked: view.open("CalendarExportPage.qml")
                }
                SettingsRow {
                    objectName: "importCalendarRow"
                    symbol: "square.and.arrow.down"
                    title: qsTrId("importFromCalendarFileRow")
                    onClicked: view.open("CalendarImportPage.qml")
                }
            }

            SettingsGroup {
                SettingsRow {
                    objectName: "feedbackRow"
                    symbol: "envelope"
                    title: qsTrId("feedback&BugsAtSettingPage")
                    onClicked: {
                        Haptics.impact()
                        settingsModel.sendFeedback()
                    }
                }
                SettingsRow {
                    objectName: "helpRow"
                    symbol: "questionmark.circle"
                    title: qsTrId("helpSubPageNavigationTitleString")
                    onClicked: view.open("HelpSubPage.qml")
                }
                SettingsRow {
                    objectName: "shareSettingRow"
                    symbol: "person.2"
                    title: qsTrId("shareSettingSubPageNavigationTitleString")
                    onClicked: view.open("ShareSettingSubPage.qml")
                }
                SettingsRow {
                    objectName: "aboutRow"
                    symbol: "info.circle"
                    title: qsTrId("aboutSubPageNavigationTitleString")
                    onClicked: view.open("AboutSubPage.qml")
                }
                SettingsRow {
                    objectName: "supportRow"
                    symbol: "heart"
                    title: qsTrId("supportMeSubPageNavigationTitleString")
                    onClicked: view.open("SupportMeSubPage.qml")
                }
            }

            SettingsGroup {
                heading: qsTrId("headerForOtherAppFromDevSectionStringAtAboutPage")
                SettingsLinkRows { model: settingsModel }
                SettingsRow {
                    id: shareRow
                    objectName: "shareAppRow"
                    symbol: "square.and.arrow.up"
                    title: qsTrId("shareButtonStringAtAboutPage")
                    chevron: false
                    property bool loadingViewToggleForSettingPageShareLinkButton: false
                    trailing: BusyIndicator {
                        implicitWidth: 24
                        implicitHeight: 24
                        running: shareRow.loadingViewToggleForSettingPageShareLinkButton
                        visible: running
                    }
                    onClicked: {
                        Haptics.impact()
                        loadingViewToggleForSettingPageShareLinkButton = true
                        view.noteRequested(settingsModel.shareApp())
                        loadingViewToggleForSettingPageShareLinkButton = false
                    }
                }
            }

            // The footer: the version, and the site registration line where the region needs it.
            ColumnLayout {
                objectName: "settingsFooter"
                Layout.fillWidth: true
                Layout.topMargin: 4
                spacing: 4
                Label {
                    objectName: "versionLine"
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTrId("appDisplayName") + " " + settingsModel.version
                    font.pixelSize: 12
                    color: view.colors.secondaryText
                }
                Label {
                    objectName: "registrationLine"
                    Layout.fillWidth: true
                    visible: settingsModel.showsRegistrationLine
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTrId("footerRegistrationLineString")
                    font.pixelSize: 12
                    color: view.colors.secondaryText
                }
                Label {
                    objectName: "makerLine"
                    Layout.fillWidth: true
                    visible: !settingsModel.showsRegistrationLine
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTrId("footerMakerLineString")
                    font.pixelSize: 12
                    color: view.colors.secondaryText
                }
            }
        }
    }

    BottomPopupForAppearences { id: appearancePopup; actions: appearance }
    PopupForBackgroundImageSetting { id: backgroundPopup }
}
