import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// Shows whether an event is shared and with which group; it changes nothing.
Page {
    id: page
    objectName: "editShareSettingPage"

    property string eventId
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias share: model

    EditShareSettingModel {
        id: model
        eventId: page.eventId
    }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("editShareAtCardViewForEventObjcetTitleString")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
    }

    ColumnLayout {
        x: 16
        y: 12
        width: parent.width - 32
        spacing: 10

        SectionCard {
            visible: model.exists
            colors: page.tone
            Layout.fillWidth: true
            ChevronRow {
                objectName: "shareStateRow"
                colors: page.tone
                chevron: false
                label: qsTrId("shareStateTitleStringAtEditShareSettingPage")
                value: model.shareOn ? qsTrId("shareStateOnStringAtEditShareSettingPage")
                                     : qsTrId("shareStateOffStringAtEditShareSettingPage")
            }
            ChevronRow {
                objectName: "shareGroupRow"
                colors: page.tone
                chevron: false
                separator: false
                label: qsTrId("shareGroupTitleStringAtEditShareSettingPage")
                value: model.groupFound ? model.groupTitle
                                        : qsTrId("shareGroupNoneStringAtEditShareSettingPage")
            }
        }
        Label {
            objectName: "shareNote"
            visible: model.exists
            text: qsTrId("shareExplanationStringAtEditShareSettingPage")
            color: page.tone.secondaryText
            font.pixelSize: Theme.fontSmall
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
        }
        Label {
            objectName: "goneText"
            visible: !model.exists
            text: qsTrId("eventGoneStringAtCardViewForEventObject")
            color: page.tone.secondaryText
            font.pixelSize: Theme.fontSubhead
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
