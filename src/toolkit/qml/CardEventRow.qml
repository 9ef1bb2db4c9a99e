import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Components

// The event's row at the head of the card and of the memo page: the row's texts without its
// buttons. An event that no longer exists leaves an empty row with a short note.
Rectangle {
    id: row
    property string eventId
    property var colors
    property bool dark: false
    readonly property alias rowModel: rowData

    implicitWidth: 358
    implicitHeight: (rowData.exists ? body.implicitHeight : gone.implicitHeight) + 28
    radius: Theme.radiusLarge
    color: colors.cardBackground
    border.color: colors.cardBorder
    border.width: 1
    clip: true

    EventRowModel {
        id: rowData
        eventId: row.eventId
    }

    Label {
        id: gone
        objectName: "goneText"
        visible: !rowData.exists
        x: 20
        width: parent.width - 40
        anchors.verticalCenter: parent.verticalCenter
        text: qsTrId("eventGoneStringAtCardViewForEventObject")
        font.pixelSize: Theme.fontBody
        color: row.colors.secondaryText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    Rectangle {
        objectName: "colorMark"
        visible: rowData.exists && rowData.colorName.length > 0
        width: 6
        height: parent.height
        color: Theme.named(rowData.colorName, row.dark)
    }

    RowLayout {
        id: body
        visible: rowData.exists
        x: 20
        y: 14
        width: parent.width - 36
        spacing: Theme.spacingMedium

        ColumnLayout {
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
            spacing: Theme.spacingSmall

            RowLayout {
                Layout.fillWidth: true
                spacing: 6
                Label {
                    objectName: "rowTitle"
                    text: rowData.title
                    font.pixelSize: Theme.fontEmphasis
                    font.weight: Font.DemiBold
                    color: row.colors.primaryText
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    Layout.fillWidth: true
                }
                Repeater {
                    objectName: "rowSymbols"
                    model: rowData.symbols
                    delegate: Label {
                        required property string modelData
                        text: Symbols.glyph(modelData)
                        font.family: Symbols.fontFamily
                        font.pixelSize: Theme.fontBodyLarge
                        color: modelData === "star.fill" ? row.colors.starSymbol
                                                         : row.colors.symbolTint
                    }
                }
            }
            Label {
                visible: text.length > 0
                text: rowData.typeText
                font.pixelSize: Theme.fontSmall
                font.weight: Font.Medium
                color: row.colors.symbolTint
            }
            Label {
                objectName: "rowContent"
                visible: text.length > 0
                text: rowData.content
                font.pixelSize: Theme.fontSubhead
                color: row.colors.secondaryText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            Label {
                objectName: "rowDates"
                text: rowData.datesText
                font.pixelSize: Theme.fontSmall
                color: row.colors.secondaryText
            }
        }

        ColumnLayout {
            visible: !rowData.repeating
            Layout.alignment: Qt.AlignTop
            spacing: 0
            Label {
                visible: text.length > 0
                text: rowData.dayCountNumber
                font.pixelSize: Theme.fontLargeTitle
                font.weight: Font.Bold
                color: row.colors.primaryText
                Layout.alignment: Qt.AlignRight
            }
            Label {
                text: rowData.dayCountUnit.trim()
                font.pixelSize: rowData.isToday ? 17 : 12
                font.weight: rowData.isToday ? Font.Bold : Font.Normal
                color: rowData.isToday ? Theme.named("tabBarIconColorForSelected", row.dark)
                                       : row.colors.secondaryText
                Layout.alignment: Qt.AlignRight
            }
        }
    }
}
