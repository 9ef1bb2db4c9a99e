import TideMark.Settings

// The same page where each button asks first and a changed account is confirmed; the cloud
// page's code row leads here while the account differs from the one this device adopted.
CloudSettingPage {
    objectName: "icloudSettingSubPage"
    asksFirst: true
}
