import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Editing
import TideMark.Components

// The body shared by the two reminder pages: one row per lead time that the event's type offers
// (the chosen one with a checkmark), and for lead times counted in days a time picker with four
// shortcuts. `model` is an AddNotiRuleModel or an EditNotiRuleModel.
ColumnLayout {
    id: editor
    property var model
    property var colors
    spacing: 18

    SectionCard {
        padded: true
        Layout.fillWidth: true
        colors: editor.colors

        Repeater {
            objectName: "codeRows"
            model: editor.model.codes
            AbstractButton {
                id: row
                required property int modelData
                readonly property bool current: editor.model.selectedCode === modelData
                objectName: "notiCode" + modelData
                Layout.fillWidth: true
                implicitHeight: 40
                background: Rectangle {
                    radius: Theme.radiusSmall
                    color: row.pressed ? editor.colors.chipBackground : "transparent"
                }
                contentItem: RowLayout {
                    spacing: Theme.spacing
                    Label {
                        text: editor.model.codeText(row.modelData)
                        color: editor.colors.primaryText
                        font.pixelSize: Theme.fontBody
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                        Layout.leftMargin: 4
                    }
                    Label {
                        objectName: "checkmark"
                        visible: row.current
                        text: Symbols.glyph("checkmark")
                        font.family: Symbols.fontFamily
                        font.pixelSize: Theme.fontHeader
                        color: row.Material.accent
                        Layout.rightMargin: 4
                    }
                }
                onClicked: editor.model.selectedCode = modelData
            }
        }

        Label {
            objectName: "noCodeText"
            visible: !editor.model.codeOffered
            text: qsTrId("tellUserChoseOneCycleTypeForNoti")
            color: editor.colors.secondaryText
            font.pixelSize: Theme.fontSmall
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
    }

    SectionCard {
        padded: true
        objectName: "timeSection"
        visible: editor.model.needsTime
        Layout.fillWidth: true
        colors: editor.colors

        RulesTimeWheel {
            objectName: "notiTime"
            Layout.alignment: Qt.AlignHCenter
            hour: editor.model.hour
            minute: editor.model.minute
            colors: editor.colors
            onTimePicked: (h, m) => editor.model.setTime(h, m)
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.spacing
            Repeater {
                model: [9, 12, 18, 21]
                RulesChoiceCell {
                    required property int modelData
                    objectName: "shortcut" + String(modelData).padStart(2, "0") + "00"
                    text: String(modelData).padStart(2, "0") + ":00"
                    colors: editor.colors
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    implicitHeight: 36
                    selected: editor.model.hour === modelData && editor.model.minute === 0
                    onClicked: editor.model.setTime(modelData, 0)
                }
            }
        }
    }
}
