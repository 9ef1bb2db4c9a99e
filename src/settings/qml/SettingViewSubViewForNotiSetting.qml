import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// Reminders: the master switch of all reminders (dimmed while the system doesn't let the app
// notify, but still usable), and the way to the desktop's notification settings, where the
// permission itself is given.
Page {
    id: page
    objectName: "settingViewSubViewForNotiSetting"
    title: qsTrId("notiSettingSubViewNavigationTitleString")

    readonly property bool dark: Material.theme === Material.Dark
    property bool loadingViewShowUp: false

    readonly property ThemeColors colors: Theme.colors(page.dark)
    NotiSettingModel { id: model }
    background: PageBackground {}

    Component.onCompleted: model.appeared()

    function dismiss() {
        if (page.StackView.view)
            page.StackView.view.pop()
    }

    // The model starts the desktop's page once this one has left.
    function openSystemSettings() {
        model.openSystemSettings()
        dismiss()
    }

    header: ToolBar {
        Material.elevation: 0
        background: null
        RowLayout {
            anchors.fill: parent
            spacing: 0
            RowButton {
                objectName: "backButton"
                visible: page.StackView.view !== null && page.StackView.index > 0
                symbol: "chevron.left"
                tint: page.colors.primaryText
                onClicked: page.dismiss()
            }
            Label {
                objectName: "navigationTitle"
                text: page.title
                font.pixelSize: Theme.fontHeader
                font.weight: Font.DemiBold
                color: page.colors.primaryText
                Layout.fillWidth: true
                Layout.leftMargin: 16
            }
        }
    }

    component Card: Rectangle {
        Layout.fillWidth: true
        radius: Theme.radiusCard
        color: page.colors.cardBackground
        border.color: page.colors.cardBorder
    }

    ColumnLayout {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.spacingLarge
        spacing: 10

        Card {
            implicitHeight: switchRow.implicitHeight + 16
            RowLayout {
                id: switchRow
                objectName: "masterSwitchRow"
                anchors.fill: parent
                anchors.leftMargin: Theme.spacingLarge
                anchors.rightMargin: Theme.spacing
                opacity: model.authorized ? 1 : 0.28
                spacing: Theme.spacingMedium
                Label {
                    text: Symbols.glyph(model.switchOn ? "bell.badge" : "bell.slash")
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontHeadline
                    color: page.colors.symbolTint
                }
                Label {
                    objectName: "masterSwitchLabel"
                    Layout.fillWidth: true
                    text: model.switchOn ? qsTrId("notiStatusOnTitleStringAtNotiSettingSubViewPage")
                                         : qsTrId("notiStatusOffTitleStringAtNotiSettingSubViewPage")
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.fontBodyLarge
                    color: page.colors.primaryText
                }
                TideSwitch {
                    objectName: "masterSwitch"
                    checked: model.switchOn
                    onToggled: {
                        Haptics.impact()
                        model.switchOn = checked
                        checked = Qt.binding(() => model.switchOn)
                    }
                }
            }
        }
        Label {
            objectName: "notAuthorizedNote"
            Layout.fillWidth: true
            Layout.leftMargin: 4
            visible: !model.authorized
            text: qsTrId("notiNotAuthorizedExplanationString")
            wrapMode: Text.Wrap
            font.pixelSize: Theme.fontSmall
            color: page.colors.secondaryText
        }

        Card {
            Layout.topMargin: 8
            implicitHeight: settingsButton.implicitHeight
            visible: model.systemSettingsAvailable
            ItemDelegate {
                id: settingsButton
                objectName: "openSystemSettingsButton"
                anchors.left: parent.left
                anchors.right: parent.right
                contentItem: RowLayout {
                    spacing: Theme.spacingMedium
                    Label {
                        text: Symbols.glyph("gearshape")
                        font.family: Symbols.fontFamily
                        font.pixelSize: Theme.fontHeadline
                        color: page.colors.symbolTint
                    }
                    Label {
                        Layout.fillWidth: true
                        text: qsTrId("requestAuthorizationStringAtNotiSettingSubViewPage")
                        wrapMode: Text.Wrap
                        font.pixelSize: Theme.fontBodyLarge
                        color: page.colors.primaryText
                    }
                    Label {
                        text: Symbols.glyph("chevron.right")
                        font.family: Symbols.fontFamily
                        font.pixelSize: Theme.fontHeader
                        color: page.colors.secondaryText
                    }
                }
                onClicked: {
                    Haptics.impact()
                    page.openSystemSettings()
                }
            }
        }
        Label {
            objectName: "noSystemSettingsNote"
            Layout.fillWidth: true
            Layout.leftMargin: 4
            Layout.topMargin: 8
            visible: !model.systemSettingsAvailable
            text: qsTrId("notiNoSystemSettingsString")
            wrapMode: Text.Wrap
            font.pixelSize: Theme.fontSmall
            color: page.colors.secondaryText
        }
    }

    BusyIndicator {
        anchors.centerIn: parent
        running: page.loadingViewShowUp
        visible: running
    }
}
