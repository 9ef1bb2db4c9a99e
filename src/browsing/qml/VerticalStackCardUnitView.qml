import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Components

// One card of the vertical stacks: the event row's texts on the stack's own card colours, a
// wide colour band, and the calendar symbols before the dates. A tap asks for the event's card.
// An event that no longer exists draws nothing.
Rectangle {
    id: unit

    property string eventId
    property bool dark: false
    /// Glass look: a see-through surface with a light edge instead of the solid card.
    property bool activateGlassMorphism: false
    property real defaultBlurRadius: 0
    property real defaultSaturationAmount: 1
    readonly property alias eventInfoData: rowData

    signal cardRequested(string eventId)

    readonly property color foreground: Theme.named("verStackCardsForegroundColorTry", dark)
    readonly property color secondary: Qt.rgba(foreground.r, foreground.g, foreground.b, 0.68)
    readonly property color accent: rowData.colorName.length > 0 ? Theme.named(rowData.colorName, dark)
                                                                  : Theme.named("tabBarIconColorForSelected", dark)

    visible: rowData.exists
    radius: 22
    color: activateGlassMorphism ? Qt.rgba(background.r, background.g, background.b, 0.94) : background
    readonly property color background: Theme.named("verStackCardsBackgroundNewTry", dark)
    border.width: 1
    border.color: activateGlassMorphism ? Qt.rgba(1, 1, 1, dark ? 0.22 : 0.9)
                                        : Qt.rgba(foreground.r, foreground.g, foreground.b, 0.14)
    clip: true

    EventRowModel {
        id: rowData
        eventId: unit.eventId
    }

    TapHandler {
        onTapped: unit.cardRequested(unit.eventId)
    }

    Rectangle {
        objectName: "cardBand"
        x: 20
        y: 12
        width: 48
        height: 6
        radius: 3
        color: unit.accent
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.spacingPage
        anchors.topMargin: 26
        spacing: 6

        RowLayout {
            Layout.fillWidth: true
            spacing: 6
            Label {
                objectName: "cardTitle"
                text: rowData.title
                font.pixelSize: Theme.fontHeadline
                font.weight: Font.Bold
                color: unit.foreground
                elide: Text.ElideRight
                maximumLineCount: 1
                Layout.fillWidth: true
            }
            Repeater {
                model: rowData.symbols
                delegate: Label {
                    required property string modelData
                    text: Symbols.glyph(modelData)
                    font.family: Symbols.fontFamily
                    font.pixelSize: Theme.fontEmphasis
                    color: modelData === "star.fill" ? Theme.colors(unit.dark).starSymbol : unit.accent
                }
            }
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.spacing
            Label {
                visible: !rowData.repeating && text.length > 0
                text: rowData.dayCountNumber
                font.pixelSize: 40
                font.weight: Font.Bold
                color: unit.accent
            }
            Label {
                text: rowData.repeating ? rowData.typeText : rowData.dayCountUnit.trim()
                font.pixelSize: rowData.repeating || rowData.isToday ? 18 : 14
                font.weight: Font.DemiBold
                color: rowData.repeating || rowData.isToday ? unit.accent : unit.secondary
                Layout.alignment: Qt.AlignBaseline
            }
            Item { Layout.fillWidth: true }
        }

        Label {
            objectName: "cardContent"
            visible: text.length > 0
            text: rowData.content
            font.pixelSize: Theme.fontBody
            color: unit.secondary
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            Layout.fillWidth: true
        }

        Item { Layout.fillHeight: true }

        RowLayout {
            spacing: 6
            Label {
                text: Symbols.glyph(rowData.repeating ? "calendar.badge.clock" : "calendar")
                font.family: Symbols.fontFamily
                font.pixelSize: Theme.fontBodyLarge
                color: unit.secondary
            }
            Label {
                objectName: "cardDates"
                text: rowData.datesText
                font.pixelSize: Theme.fontSubhead
                color: unit.secondary
            }
        }
    }
}
