import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// Support: thanks the user and offers a voluntary tip through the project's web page. A tip
// unlocks nothing.
SettingsPage {
    id: page
    objectName: "supportMeSubPage"
    title: qsTrId("supportMeSubPageNavigationTitleString")

    SettingViewModel { id: settingsModel }

    Label {
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 24
        text: Symbols.glyph("heart")
        font.family: Symbols.fontFamily
        font.pixelSize: 64
        color: Theme.named("tabBarIconColorForPlusButton", page.dark)
    }
    Label {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        text: qsTrId("supportMeThanksTitleString")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontHeadline
        font.bold: true
        color: page.colors.primaryText
    }
    Label {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        text: qsTrId("supportMeThanksTextString")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontBody
        color: page.colors.secondaryText
    }
    Button {
        objectName: "tipButton"
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 8
        highlighted: true
        Material.accent: Theme.named("tabBarIconColorForSelected", page.dark)
        text: qsTrId("supportMeTipButtonString")
        onClicked: {
            Haptics.impact()
            settingsModel.openLink(settingsModel.tipPage)
        }
    }
    Label {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        text: qsTrId("supportMeUnlocksNothingString")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontSmall
        color: page.colors.secondaryText
    }
}
