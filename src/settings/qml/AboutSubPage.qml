import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// About: the version and the day of this build, rating and sharing the app, and the links out.
SettingsPage {
    id: page
    objectName: "aboutSubPage"
    title: qsTrId("aboutSubPageNavigationTitleString")

    signal noteRequested(string text)

    SettingViewModel { id: settingsModel }

    // The app's mark and name above the facts.
    ColumnLayout {
        Layout.fillWidth: true
        Layout.topMargin: 8
        spacing: 6
        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 84
            implicitHeight: 84
            radius: 22
            color: Theme.named("tabBarIconColorForSelected", page.dark)
            Label {
                anchors.centerIn: parent
                text: Symbols.glyph("calendar")
                font.family: Symbols.fontFamily
                font.pixelSize: 50
                color: Theme.colors(page.dark).selectedText
            }
        }
        Label {
            Layout.alignment: Qt.AlignHCenter
            text: qsTrId("appDisplayName")
            font.pixelSize: Theme.fontHeadline
            font.bold: true
            color: page.colors.primaryText
        }
    }

    SettingsGroup {
        heading: qsTrId("headerForAppInfoSectionStringAtAboutPage")
        SettingsRow {
            objectName: "versionRow"
            symbol: "info.circle"
            title: qsTrId("appVersionInfoAtAboutPage")
            chevron: false
            trailing: Label { text: settingsModel.version; color: page.colors.secondaryText; font.pixelSize: 15 }
        }
        SettingsRow {
            objectName: "updateRow"
            symbol: "calendar"
            title: qsTrId("appUpdateInfoAtAboutPage")
            chevron: false
            trailing: Label { text: settingsModel.buildDate; color: page.colors.secondaryText; font.pixelSize: 15 }
        }
    }

    SettingsGroup {
        heading: qsTrId("headerForShareAndRateSectionStringAtAboutPage")
        SettingsRow {
            objectName: "reviewRow"
            symbol: "star.fill"
            title: qsTrId("reviewButtonStringAtAboutPage")
            onClicked: {
                Haptics.impact()
                settingsModel.openReviewPage()
            }
        }
        SettingsRow {
            objectName: "shareAppRow"
            symbol: "square.and.arrow.up"
            title: qsTrId("shareButtonStringAtAboutPage")
            chevron: false
            onClicked: {
                Haptics.impact()
                page.noteRequested(settingsModel.shareApp())
            }
        }
    }

    SettingsGroup {
        heading: qsTrId("headerForOtherAppFromDevSectionStringAtAboutPage")
        SettingsLinkRows { model: settingsModel }
    }
}
