import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The settings tab until the settings screen lands: a plain note that says so.
Item {
    objectName: "settingPlaceholderView"

    ColumnLayout {
        anchors.centerIn: parent
        width: parent.width - 64
        spacing: 12
        Label {
            Layout.alignment: Qt.AlignHCenter
            text: Symbols.glyph("gearshape")
            font.family: Symbols.fontFamily
            font.pixelSize: 48
            opacity: 0.5
        }
        Label {
            objectName: "settingsComingLabel"
            Layout.fillWidth: true
            text: qsTrId("settingsComingString")
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 17
            opacity: 0.75
        }
    }
}
