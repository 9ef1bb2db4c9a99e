import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Components

// One event row: colour mark, title, state symbols, type text, day count, content, dates, the
// details disclosure and the row's buttons. Set `eventId`; an event that no longer exists draws
// nothing. The row emits the requests of its buttons. With `offersSchedule` a calendar button asks
// for the event's schedule page.
Item {
    id: row

    property string eventId
    property bool showMoreDetailToggle: false
    property bool offersSchedule: false
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias rowModel: rowData

    signal memoRequested(string eventId)
    signal editRequested(string eventId)
    signal shareRequested(string eventId)
    signal cardRequested(string eventId)
    signal scheduleRequested(string eventId)

    visible: rowData.exists
    implicitWidth: 358
    implicitHeight: rowData.exists ? card.implicitHeight : 0

    EventRowModel {
        id: rowData
        eventId: row.eventId
    }

    readonly property ThemeColors colors: Theme.colors(row.dark)

    Rectangle {
        id: card
        objectName: "rowCard"
        width: parent.width
        implicitHeight: body.implicitHeight + 28
        visible: rowData.exists
        radius: Theme.radiusLarge
        color: row.colors.cardBackground
        border.color: row.colors.cardBorder
        border.width: 1
        clip: true

        TapHandler {
            objectName: "rowTap"
            onTapped: row.cardRequested(row.eventId)
        }

        Rectangle {
            objectName: "colorMark"
            visible: rowData.colorName.length > 0
            x: 0
            width: 6
            height: parent.height
            color: Theme.named(rowData.colorName, row.dark)
        }

        ColumnLayout {
            id: body
            x: 20
            y: 14
            width: parent.width - 36
            spacing: 6

            RowLayout {
                Layout.fillWidth: true
                spacing: Theme.spacingMedium

                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.alignment: Qt.AlignTop
                    spacing: Theme.spacingSmall

                    RowLayout {
                        Layout.fillWidth: true
                        spacing: 6
                        Label {
                            objectName: "title"
                            text: rowData.title
                            font.pixelSize: Theme.fontTitle
                            font.weight: Font.DemiBold
                            color: row.colors.primaryText
                            elide: Text.ElideRight
                            maximumLineCount: 1
                            Layout.fillWidth: true
                        }
                        Repeater {
                            objectName: "symbols"
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
                        objectName: "typeText"
                        visible: text.length > 0
                        text: rowData.typeText
                        font.pixelSize: Theme.fontSmall
                        font.weight: Font.Medium
                        color: row.colors.symbolTint
                    }

                    Label {
                        objectName: "content"
                        visible: text.length > 0
                        text: rowData.content
                        font.pixelSize: Theme.fontSubhead
                        color: row.colors.secondaryText
                        wrapMode: Text.Wrap
                        maximumLineCount: 3
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }

                    Label {
                        objectName: "dates"
                        text: rowData.datesText
                        font.pixelSize: Theme.fontSmall
                        color: row.colors.secondaryText
                    }
                }

                ColumnLayout {
                    objectName: "dayCount"
                    visible: !rowData.repeating
                    Layout.alignment: Qt.AlignTop
                    spacing: 0
                    Label {
                        objectName: "dayCountNumber"
                        visible: text.length > 0
                        text: rowData.dayCountNumber
                        font.pixelSize: Theme.fontLargeTitle
                        font.weight: Font.Bold
                        color: row.colors.primaryText
                        Layout.alignment: Qt.AlignRight
                    }
                    Label {
                        objectName: "dayCountUnit"
                        text: rowData.dayCountUnit.trim()
                        font.pixelSize: rowData.isToday ? 17 : 12
                        font.weight: rowData.isToday ? Font.Bold : Font.Normal
                        color: rowData.isToday ? Theme.named("tabBarIconColorForSelected", row.dark)
                                             : row.colors.secondaryText
                        Layout.alignment: Qt.AlignRight
                    }
                }
            }

            Item {
                id: details
                objectName: "details"
                Layout.fillWidth: true
                clip: true
                implicitHeight: row.showMoreDetailToggle ? detailsColumn.implicitHeight + 16 : 0
                opacity: row.showMoreDetailToggle ? 1 : 0
                visible: implicitHeight > 0
                Behavior on implicitHeight { NumberAnimation { duration: 220; easing.type: Easing.OutCubic } }
                Behavior on opacity { NumberAnimation { duration: 220 } }

                Rectangle {
                    width: parent.width
                    height: detailsColumn.implicitHeight + 16
                    radius: 10
                    color: row.colors.chipBackground
                    ColumnLayout {
                        id: detailsColumn
                        x: 10
                        y: 8
                        width: parent.width - 20
                        spacing: 2
                        Label {
                            objectName: "detailsText"
                            visible: text.length > 0
                            text: rowData.detailsText
                            font.pixelSize: Theme.fontSmall
                            color: row.colors.primaryText
                            wrapMode: Text.Wrap
                            Layout.fillWidth: true
                        }
                        Label {
                            objectName: "nextDateText"
                            visible: rowData.nextDateText.length > 0
                            text: qsTrId("nextDateLabelStringForListRowViewForTimeline") + rowData.nextDateText
                            font.pixelSize: Theme.fontSmall
                            color: row.colors.secondaryText
                            wrapMode: Text.Wrap
                            Layout.fillWidth: true
                        }
                    }
                }
            }

            RowLayout {
                Layout.fillWidth: true
                Layout.leftMargin: -10
                Layout.bottomMargin: -8
                spacing: 0

                RowButton {
                    objectName: "memoButton"
                    visible: rowData.hasMemo
                    symbol: "list.clipboard"
                    tint: row.colors.symbolTint
                    onClicked: row.memoRequested(row.eventId)
                }
                RowButton {
                    objectName: "editButton"
                    symbol: "square.and.pencil"
                    tint: row.colors.symbolTint
                    onClicked: row.editRequested(row.eventId)
                }
                RowButton {
                    objectName: "shareButton"
                    symbol: "square.and.arrow.up"
                    tint: row.colors.symbolTint
                    onClicked: row.shareRequested(row.eventId)
                }
                RowButton {
                    objectName: "scheduleButton"
                    visible: row.offersSchedule
                    symbol: "calendar"
                    tint: row.colors.symbolTint
                    onClicked: row.scheduleRequested(row.eventId)
                }
                Item { Layout.fillWidth: true }
                RowButton {
                    objectName: "detailsToggle"
                    visible: rowData.detailsText.length > 0 || rowData.nextDateText.length > 0
                    symbol: "chevron.down"
                    tint: row.colors.symbolTint
                    rotation: row.showMoreDetailToggle ? 180 : 0
                    Behavior on rotation { NumberAnimation { duration: 220 } }
                    onClicked: row.showMoreDetailToggle = !row.showMoreDetailToggle
                }
            }
        }
    }
}
