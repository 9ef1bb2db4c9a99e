import QtQuick
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings

// The links out that the settings tab and the about page share: the app's web site and its
// source code, opened in the desktop's browser.
ColumnLayout {
    id: links

    required property SettingViewModel model

    Layout.fillWidth: true
    spacing: 0

    SettingsRow {
        objectName: "projectSiteRow"
        symbol: "link"
        title: qsTrId("projectSiteRowString")
        detail: links.model.shareLinkForThisApp
        onClicked: {
            Haptics.impact()
            links.model.openLink(links.model.shareLinkForThisApp)
        }
    }
    SettingsRow {
        objectName: "sourceCodeRow"
        symbol: "link"
        title: qsTrId("sourceCodeRowString")
        onClicked: {
            Haptics.impact()
            links.model.openLink(links.model.sourcePage)
        }
    }
}
