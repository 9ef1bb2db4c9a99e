import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark.Settings
import TideMark.Components

// Help: short answers to what new users ask most, one card each.
SettingsPage {
    id: page
    objectName: "helpSubPage"
    title: qsTrId("helpSubPageNavigationTitleString")

    Repeater {
        model: 5
        delegate: SettingsGroup {
            id: entry
            required property int index
            readonly property string number: String(index + 1).padStart(2, "0")
            heading: qsTrId("helpQuestionString" + number)
            Label {
                Layout.fillWidth: true
                Layout.margins: 14
                text: qsTrId("helpAnswerString" + entry.number)
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontBody
                color: page.colors.primaryText
            }
        }
    }
}
