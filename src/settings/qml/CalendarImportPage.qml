import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Settings
import TideMark.Components

// Reads a calendar or contacts file: first what it would add and what it leaves out, then, when
// confirmed, the events go into the date book.
SettingsPage {
    id: page
    objectName: "calendarImportPage"
    title: qsTrId("importPageTitle")

    /// The import's model; a test may hand in one with a preview.
    property InterchangeModel interchange: InterchangeModel {}

    FileDialog {
        id: openDialog
        objectName: "importFileDialog"
        fileMode: FileDialog.OpenFile
        nameFilters: ["iCalendar, vCard (*.ics *.ical *.ifb *.vcf *.vcard)"]
        onAccepted: page.interchange.preview(page.interchange.pathOf(selectedFile))
    }

    Label {
        Layout.fillWidth: true
        text: qsTrId("importPageExplanation")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontBody
        color: page.colors.secondaryText
    }
    Button {
        objectName: "chooseImportFileButton"
        Layout.fillWidth: true
        text: qsTrId("importChooseButton")
        onClicked: openDialog.open()
    }
    Label {
        objectName: "importSummary"
        Layout.fillWidth: true
        text: page.interchange.hasPreview ? page.interchange.previewSummary
              : page.interchange.status !== "" ? page.interchange.status
              : qsTrId("importNothingChosen")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontBody
        color: page.colors.primaryText
    }
    SettingsGroup {
        objectName: "toAddGroup"
        visible: page.interchange.addCount > 0
        heading: qsTrId("importToAddHeader")
        Repeater {
            model: page.interchange.toAdd
            SettingsRow {
                chevron: false
                title: modelData.title
                detail: modelData.detail
            }
        }
    }
    SettingsGroup {
        objectName: "leftOutGroup"
        visible: page.interchange.leftOut.length > 0
        heading: qsTrId("importSkippedHeader")
        Repeater {
            model: page.interchange.leftOut
            SettingsRow {
                chevron: false
                dimmed: true
                title: modelData.title
                detail: modelData.detail
            }
        }
    }
    RowLayout {
        visible: page.interchange.hasPreview
        Layout.fillWidth: true
        Button {
            objectName: "cancelImportButton"
            Layout.fillWidth: true
            text: qsTrId("importCancelButton")
            flat: true
            onClicked: page.interchange.clearPreview()
        }
        Button {
            objectName: "addImportButton"
            Layout.fillWidth: true
            enabled: page.interchange.addCount > 0
            text: qsTrId("importAddButton").arg(page.interchange.addCount)
            font.bold: true
            onClicked: {
                Haptics.impact()
                page.interchange.addPreviewed()
            }
        }
    }
}
