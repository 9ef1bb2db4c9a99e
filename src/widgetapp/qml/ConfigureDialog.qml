import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Components

// The widget's settings: its size, and the event it shows (small, medium, lock) or the kind it
// lists (large), from the events the configuration side offers. Done keeps the choice for this
// widget.
Window {
    id: dialog

    required property var model
    required property var colors
    readonly property bool large: chosenSize === "large"
    property string chosenSize: model.size
    property string chosenEvent: model.eventId
    property int chosenKind: model.kind

    objectName: "configureDialog"
    width: 380
    height: 520
    title: qsTrId("widgetConfigureTitle")
    color: colors.pageBackground
    Material.theme: model.dark ? Material.Dark : Material.Light
    Material.accent: Theme.named("selectedDateBackground", model.dark)

    signal sizeChosen()

    onVisibleChanged: if (visible) {
        chosenSize = model.size
        chosenEvent = model.eventId
        chosenKind = model.kind
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.spacingLarge
        spacing: Theme.spacing

        Label {
            text: qsTrId("widgetConfigureSizeLabel")
            font.pixelSize: Theme.fontBody
            font.weight: Font.DemiBold
        }
        Flow {
            Layout.fillWidth: true
            Repeater {
                model: ["small", "medium", "large", "lock"]
                RadioButton {
                    required property string modelData
                    text: qsTrId("widgetSize_" + modelData)
                    checked: dialog.chosenSize === modelData
                    onClicked: dialog.chosenSize = modelData
                }
            }
        }
        Label {
            text: dialog.large ? qsTrId("widgetConfigureKindLabel") : qsTrId("widgetConfigureEventLabel")
            font.pixelSize: Theme.fontBody
            font.weight: Font.DemiBold
        }
        Label {
            visible: !dialog.large && dialog.model.eventOptions.length === 0
            Layout.fillWidth: true
            text: qsTrId("widgetNoDataText")
            wrapMode: Text.Wrap
            color: dialog.colors.secondaryText
        }
        ListView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: dialog.large ? [0, 1, 2, 3, 4] : dialog.model.eventOptions
            delegate: RadioDelegate {
                required property var modelData
                width: ListView.view.width
                text: dialog.large ? dialog.model.kindName(modelData) : modelData.displayString
                checked: dialog.large ? dialog.chosenKind === modelData
                                      : dialog.chosenEvent === modelData.identifier
                onClicked: {
                    if (dialog.large)
                        dialog.chosenKind = modelData
                    else
                        dialog.chosenEvent = modelData.identifier
                }
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Button {
                text: qsTrId("widgetConfigureRemove")
                flat: true
                onClicked: dialog.model.removeWidget()
            }
            Item { Layout.fillWidth: true }
            Button {
                text: qsTrId("widgetConfigureCancel")
                flat: true
                onClicked: dialog.close()
            }
            Button {
                text: qsTrId("widgetConfigureDone")
                flat: true
                font.bold: true
                Material.foreground: Material.accent
                onClicked: {
                    const resized = dialog.chosenSize !== dialog.model.size
                    dialog.model.configure(dialog.chosenSize, dialog.chosenEvent, dialog.chosenKind)
                    if (resized)
                        dialog.sizeChosen()
                    dialog.close()
                }
            }
        }
    }
}
