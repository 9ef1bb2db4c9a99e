import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// Sharing: holds the share group of new events. It has no content of its own yet.
SettingsPage {
    id: page
    objectName: "shareSettingSubPage"
    title: qsTrId("shareSettingSubPageNavigationTitleString")

    AppStorage { id: eventShareGroupId; key: "AE_eventShareGroupId"; defaultValue: "" }

    Label {
        objectName: "placeholder"
        Layout.fillWidth: true
        Layout.topMargin: 40
        horizontalAlignment: Text.AlignHCenter
        text: qsTrId("Hello, World!")
        font.pixelSize: Theme.fontTitle
        color: page.colors.secondaryText
    }
}
