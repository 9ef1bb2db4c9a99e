import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// Writes the date book to one calendar file that other calendar programs read.
SettingsPage {
    id: page
    objectName: "calendarExportPage"
    title: qsTrId("exportPageTitle")

    InterchangeModel { id: interchange }

    FileDialog {
        id: saveDialog
        objectName: "exportFileDialog"
        fileMode: FileDialog.SaveFile
        defaultSuffix: "ics"
        nameFilters: ["iCalendar (*.ics)"]
        onAccepted: interchange.exportPath = interchange.pathOf(selectedFile)
    }

    Label {
        Layout.fillWidth: true
        text: qsTrId("exportPageExplanation")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontBody
        color: page.colors.secondaryText
    }
    SettingsGroup {
        heading: qsTrId("exportFileLabel")
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 8
            TextField {
                objectName: "exportPathField"
                Layout.fillWidth: true
                text: interchange.exportPath
                onEditingFinished: interchange.exportPath = text
            }
            Button {
                objectName: "chooseExportFileButton"
                text: qsTrId("chooseFileButton")
                flat: true
                onClicked: saveDialog.open()
            }
        }
    }
    Button {
        objectName: "exportButton"
        Layout.fillWidth: true
        text: qsTrId("exportButton")
        font.bold: true
        onClicked: {
            Haptics.impact()
            interchange.exportNow()
        }
    }
    Label {
        objectName: "exportStatus"
        Layout.fillWidth: true
        visible: text !== ""
        text: interchange.status
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontBody
        color: page.colors.primaryText
    }
}
