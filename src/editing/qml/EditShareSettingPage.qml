import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

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

    BrowsingColors {
        id: tone
        dark: page.dark
    }

    background: PageBackground {}

    header: CardPageHeader {
        colors: tone
        title: qsTrId("editShareAtCardViewForEventObjcetTitleString")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
    }

    ColumnLayout {
        x: 16
        y: 12
        width: parent.width - 32
        spacing: 10

        CardSection {
            visible: model.exists
            colors: tone
            Layout.fillWidth: true
            CardNavigationRow {
                objectName: "shareStateRow"
                colors: tone
                chevron: false
                label: qsTrId("shareStateTitleStringAtEditShareSettingPage")
                value: model.shareOn ? qsTrId("shareStateOnStringAtEditShareSettingPage")
                                     : qsTrId("shareStateOffStringAtEditShareSettingPage")
            }
            CardNavigationRow {
                objectName: "shareGroupRow"
                colors: tone
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
            color: tone.secondaryText
            font.pixelSize: 13
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
        }
        Label {
            objectName: "goneText"
            visible: !model.exists
            text: qsTrId("eventGoneStringAtCardViewForEventObject")
            color: tone.secondaryText
            font.pixelSize: 14
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
