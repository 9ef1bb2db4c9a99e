import TideMark.Settings

// The cloud page as the settings tab opens it: the buttons act at once.
CloudSettingPage {
    objectName: "popupForIcloudSetting"
}
