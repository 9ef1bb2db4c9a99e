import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The read-only summary card of one event: the date line, the title with its colour bar, the over
// text, the content, the marks with the repeat phrase or day count, and the rule box. Set
// `eventId`; a deleted event draws nothing.
Rectangle {
    id: card
    objectName: "summaryView"

    property string eventId
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias summary: summaryModel
    readonly property bool showsGrid: summaryModel.repeating
                                      && (summaryModel.eventType === 2 || summaryModel.eventType === 3)

    visible: summaryModel.exists
    implicitWidth: 358
    implicitHeight: summaryModel.exists ? body.implicitHeight + 32 : 0
    radius: 18
    color: card.tone.groupBoxBackground
    border.color: card.tone.stackCardColorForStrokeBorder
    border.width: 1

    EventRowModel { id: rowData; eventId: card.eventId }
    SummaryViewModel { id: summaryModel; eventId: card.eventId }
    readonly property ThemeColors tone: Theme.colors(card.dark)

    Rectangle {
        z: -1
        anchors.fill: parent
        anchors.topMargin: 3
        anchors.bottomMargin: -3
        radius: parent.radius
        color: card.tone.stackCardColorForShadow
    }

    ColumnLayout {
        id: body
        x: 16
        y: 16
        width: parent.width - 32
        spacing: 10

        Label {
            objectName: "dateLine"
            visible: text.length > 0
            text: summaryModel.dateLine
            font.pixelSize: Theme.fontSmall
            font.weight: Font.Medium
            color: card.tone.secondaryText
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 10
            Rectangle {
                objectName: "titleBar"
                implicitWidth: 5
                implicitHeight: 26
                radius: 2.5
                color: rowData.colorName === "" ? "gray" : Theme.named(rowData.colorName, card.dark)
                Layout.alignment: Qt.AlignTop
            }
            Label {
                objectName: "title"
                text: rowData.title
                font.pixelSize: Theme.fontHeader
                font.bold: true
                color: card.tone.primaryText
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }

        Label {
            objectName: "overText"
            visible: summaryModel.isOver
            text: qsTrId("eventAlreadyEndStringForListRowViewForTimeline")
            font.pixelSize: Theme.fontSmall
            font.weight: Font.DemiBold
            color: Theme.named("colorForUserSelection01", card.dark)
        }

        Label {
            objectName: "content"
            visible: text.length > 0
            text: rowData.content
            font.pixelSize: Theme.fontBody
            color: card.tone.secondaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        RowLayout {
            objectName: "marks"
            Layout.fillWidth: true
            spacing: 6
            Repeater {
                model: rowData.symbols
                delegate: Label {
                    required property string modelData
                    text: Symbols.glyph(modelData)
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontTitle
                    color: modelData === "star.fill" ? card.tone.starSymbol : card.tone.symbolTint
                }
            }
            Item { Layout.fillWidth: true }
            Label {
                objectName: "countText"
                text: rowData.repeating ? rowData.typeText : rowData.dayCountText
                font.pixelSize: Theme.fontBody
                font.weight: Font.DemiBold
                color: card.tone.symbolTint
            }
        }

        Rectangle {
            objectName: "ruleBox"
            visible: summaryModel.ruleText.length > 0 || card.showsGrid
            Layout.fillWidth: true
            implicitHeight: ruleColumn.implicitHeight + 24
            radius: Theme.radius
            color: card.tone.groupBoxSecBackground

            ColumnLayout {
                id: ruleColumn
                x: 12
                y: 12
                width: parent.width - 24
                Label {
                    objectName: "ruleLine"
                    visible: text.length > 0
                    text: summaryModel.ruleText
                    font.pixelSize: Theme.fontBody
                    color: card.tone.primaryText
                    Layout.fillWidth: true
                }
                SummaryViewSubPageForMonthlyAndWeeklyEvent {
                    visible: card.showsGrid
                    eventType: card.showsGrid ? summaryModel.eventType : 0
                    eventArrayData: summaryModel.ruleArchive
                    dark: card.dark
                    Layout.fillWidth: true
                }
            }
        }
    }
}
