import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark.Browsing
import TideMark.Settings
import TideMark.Components

// The appearance choice as a page of the main screen: follow the system, always light or always
// dark, the current one checked.
SettingsPage {
    id: page
    objectName: "displayModeSettingPageAtMainView"
    title: qsTrId("lightAndDarkMode")

    TimelineActions { id: schemeActions }

    SettingsGroup {
        ColorSchemeChoices {
            actions: schemeActions
            colors: page.colors
            dark: page.dark
            objectNamePrefix: "displayModeChoice"
        }
    }
}
