import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Settings
import TideMark.Components

// The settings tab: reminders, appearance, background, cloud, app lock, feedback, the app's
// pages (help, about, sharing, support), its links and a footer with the version.
Item {
    id: view
    objectName: "settingView"

    /// Asks the main screen to show a page (pushed onto the app's page stack).
    signal pageRequested(Component page, var properties)
    /// Asks the window to show a short note at the top.
    signal noteRequested(string text)

    readonly property bool dark: Material.theme === Material.Dark
    readonly property ThemeColors colors: Theme.colors(view.dark)

    NotiSettingModel { id: noti }
    SettingViewModel { id: settingsModel }
    TimelineActions { id: appearance }
    AppStorage {
        id: background
        key: "UI_BGIMAGE_allAppBackgroundSettingString"
        defaultValue: "noneBlankBackgroungImage"
    }

    // Asks the system about notifications each time the tab comes on screen.
    onVisibleChanged: if (visible) noti.appeared()
    Component.onCompleted: if (visible) noti.appeared()

    function open(subPage) {
        Haptics.impact()
        view.pageRequested(subPage, {})
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
                    onClicked: view.open(settingViewSubViewForNotiSetting)
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
                    symbol: ["sun.min", "moon.zzz", "gearshape"][appearance.colorScheme] ?? "gearshape"
                    title: qsTrId("lightAndDarkMode")
                    detail: appearance.colorScheme < 0 ? ""
                            : qsTrId(["lightAndDarkModeAlwaysLight", "lightAndDarkModeAlwaysDark",
                                      "lightAndDarkModeAUTO"][appearance.colorScheme])
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
                    onClicked: view.open(popupForIcloudSetting)
                }
                AppLockSettingRow {}
            }

            SettingsGroup {
                heading: qsTrId("calendarFileGroupTitle")
                SettingsRow {
                    objectName: "exportCalendarRow"
                    symbol: "square.and.arrow.up"
                    title: qsTrId("exportToCalendarFileRow")
                    onClicked: view.open(calendarExportPage)
                }
                SettingsRow {
                    objectName: "importCalendarRow"
                    symbol: "square.and.arrow.down"
                    title: qsTrId("importFromCalendarFileRow")
                    onClicked: view.open(calendarImportPage)
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
                    onClicked: view.open(helpSubPage)
                }
                SettingsRow {
                    objectName: "shareSettingRow"
                    symbol: "person.2"
                    title: qsTrId("shareSettingSubPageNavigationTitleString")
                    onClicked: view.open(shareSettingSubPage)
                }
                SettingsRow {
                    objectName: "aboutRow"
                    symbol: "info.circle"
                    title: qsTrId("aboutSubPageNavigationTitleString")
                    onClicked: view.open(aboutSubPage)
                }
                SettingsRow {
                    objectName: "supportRow"
                    symbol: "heart"
                    title: qsTrId("supportMeSubPageNavigationTitleString")
                    onClicked: view.open(supportMeSubPage)
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
                spacing: Theme.spacingSmall
                Label {
                    objectName: "versionLine"
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTrId("appDisplayName") + " " + settingsModel.version
                    font.pixelSize: Theme.fontCaption
                    color: view.colors.secondaryText
                }
                Label {
                    objectName: "registrationLine"
                    Layout.fillWidth: true
                    visible: settingsModel.showsRegistrationLine
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTrId("footerRegistrationLineString")
                    font.pixelSize: Theme.fontCaption
                    color: view.colors.secondaryText
                }
                Label {
                    objectName: "makerLine"
                    Layout.fillWidth: true
                    visible: !settingsModel.showsRegistrationLine
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTrId("footerMakerLineString")
                    font.pixelSize: Theme.fontCaption
                    color: view.colors.secondaryText
                }
            }
        }
    }

    BottomPopupForAppearences { id: appearancePopup; actions: appearance }
    PopupForBackgroundImageSetting { id: backgroundPopup }

    // The pages and popups this one opens.
    Component { id: settingViewSubViewForNotiSetting; SettingViewSubViewForNotiSetting {} }
    Component { id: popupForIcloudSetting; PopupForIcloudSetting {} }
    Component { id: calendarExportPage; CalendarExportPage {} }
    Component { id: calendarImportPage; CalendarImportPage {} }
    Component { id: helpSubPage; HelpSubPage {} }
    Component { id: shareSettingSubPage; ShareSettingSubPage {} }
    Component { id: aboutSubPage; AboutSubPage {} }
    Component { id: supportMeSubPage; SupportMeSubPage {} }
}
