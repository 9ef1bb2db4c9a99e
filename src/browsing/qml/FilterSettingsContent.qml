import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The filter choices shared by the filter page and the filter popup: which list, ended events,
// colour, and the appearance. Every choice is written to its persisted setting at once, so the
// lists and every other screen follow.
ColumnLayout {
    id: content

    readonly property bool dark: Material.theme === Material.Dark
    spacing: Theme.spacing

    readonly property ThemeColors colors: Theme.colors(content.dark)
    TimelineActions { id: actions }

    AppStorage { id: kind; key: "TL_UIOptions_showWhichKindEventSelection"; defaultValue: 9 }
    AppStorage { id: colour; key: "ALL_APP_filterSelectionFromUserForColorString"; defaultValue: "-" }
    AppStorage { id: showEnded; key: "TL_UIOptions_timelineViewShowEndEventOrNot"; defaultValue: true }

    component SectionTitle: Label {
        font.pixelSize: Theme.fontSmall
        font.weight: Font.DemiBold
        color: content.colors.secondaryText
        Layout.topMargin: 8
        Layout.leftMargin: 4
    }

    component CheckRow: ItemDelegate {
        id: checkRow
        property bool checkedRow: false
        Layout.fillWidth: true
        implicitHeight: 46
        contentItem: RowLayout {
            spacing: Theme.spacing
            Label {
                text: checkRow.text
                font.pixelSize: Theme.fontBody
                color: content.colors.primaryText
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                objectName: "checkmark"
                visible: checkRow.checkedRow
                text: Symbols.glyph("checkmark")
                font.family: Symbols.fontFamily
                font.pixelSize: Theme.fontHeader
                color: Theme.named("tabBarIconColorForSelected", content.dark)
            }
        }
    }

    component Group: Rectangle {
        default property alias rows: groupColumn.data
        Layout.fillWidth: true
        implicitHeight: groupColumn.implicitHeight
        radius: Theme.radius
        color: content.colors.cardBackground
        border.color: content.colors.cardBorder
        clip: true
        ColumnLayout {
            id: groupColumn
            width: parent.width
            spacing: 0
        }
    }

    SectionTitle { text: qsTrId("kindSectionTitleStringAtFilterPage") }
    Group {
        Repeater {
            model: [9, 0, 1, 2, 3]
            delegate: CheckRow {
                required property int modelData
                objectName: "kindRow" + modelData
                text: qsTrId({ 9: "menuShowAllEventStringForTimelineView",
                               0: "menuShowNotRepeatEventStringForTimelineView",
                               1: "menuShowRepeatType1EventStringForTimelineView",
                               2: "menuShowRepeatType2EventStringForTimelineView",
                               3: "menuShowStarEventStringForTimelineView" }[modelData])
                checkedRow: Number(kind.value) === modelData
                onClicked: kind.value = modelData
            }
        }
    }

    SectionTitle { text: qsTrId("endEventSectionTitleStringAtFilterPage") }
    Group {
        CheckRow {
            objectName: "showEndedTrue"
            text: qsTrId("menuButtonForTimelineViewShowEndEventOrNotTrueButtonString")
            checkedRow: showEnded.value === true
            onClicked: showEnded.value = true
        }
        CheckRow {
            objectName: "showEndedFalse"
            text: qsTrId("menuButtonForTimelineViewShowEndEventOrNotFalseButtonString")
            checkedRow: showEnded.value === false
            onClicked: showEnded.value = false
        }
    }

    SectionTitle { text: qsTrId("colorSectionTitleStringAtFilterPage") }
    Group {
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 12
            spacing: 0
            Repeater {
                model: ["colorForUserSelection01", "colorForUserSelection02", "colorForUserSelection03",
                        "colorForUserSelection04", "colorForUserSelection05", ""]
                delegate: Item {
                    id: cell
                    required property string modelData
                    required property int index
                    readonly property bool current: colour.value === modelData
                    objectName: modelData.length > 0 ? "colourCell" + index : "colourCellNone"
                    Layout.fillWidth: true
                    implicitHeight: 44
                    Rectangle {
                        anchors.centerIn: parent
                        width: 36
                        height: 36
                        radius: 18
                        color: cell.modelData.length > 0 ? Theme.named(cell.modelData, content.dark)
                                                         : content.colors.chipBackground
                        border.width: cell.current ? 3 : 0
                        border.color: content.colors.primaryText
                        Label {
                            anchors.centerIn: parent
                            text: Symbols.glyph(cell.modelData.length > 0 ? "checkmark" : "eraser.line.dashed.fill")
                            visible: cell.modelData.length === 0 || cell.current
                            font.family: Symbols.fontFamily
                            font.pixelSize: Theme.fontHeader
                            color: cell.modelData.length > 0 ? "white" : content.colors.primaryText
                        }
                    }
                    TapHandler {
                        // Tapping the chosen colour again goes back to every colour.
                        onTapped: colour.value = cell.current ? "-" : cell.modelData
                    }
                }
            }
        }
        Label {
            text: qsTrId("allColorsHintStringAtFilterPage")
            font.pixelSize: Theme.fontCaption
            color: content.colors.secondaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            Layout.bottomMargin: 10
        }
    }

    SectionTitle { text: qsTrId("appearanceSectionTitleStringAtFilterPage") }
    Group {
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 8
            spacing: Theme.spacing
            Repeater {
                model: [
                    { scheme: TimelineActions.AlwaysLight, symbol: "light.max", key: "alwaysLightStringAtFilterPage" },
                    { scheme: TimelineActions.AlwaysDark, symbol: "moon.zzz", key: "alwaysDarkStringAtFilterPage" },
                    { scheme: TimelineActions.FollowSystem, symbol: "sun.min", key: "followSystemStringAtFilterPage" }
                ]
                delegate: ItemDelegate {
                    id: schemeCell
                    required property var modelData
                    readonly property bool current: actions.colorScheme === modelData.scheme
                    objectName: "schemeCell" + modelData.scheme
                    Layout.fillWidth: true
                    implicitHeight: 72
                    onClicked: actions.chooseColorScheme(modelData.scheme)
                    contentItem: ColumnLayout {
                        spacing: 2
                        RowLayout {
                            Layout.alignment: Qt.AlignHCenter
                            spacing: 2
                            Label {
                                text: Symbols.glyph(schemeCell.modelData.symbol)
                                font.family: Symbols.fontFamily
                                font.pixelSize: 24
                                color: content.colors.primaryText
                            }
                            Label {
                                objectName: "checkmark"
                                visible: schemeCell.current
                                text: Symbols.glyph("checkmark")
                                font.family: Symbols.fontFamily
                                font.pixelSize: Theme.fontEmphasis
                                color: Theme.named("tabBarIconColorForSelected", content.dark)
                            }
                        }
                        Label {
                            text: qsTrId(schemeCell.modelData.key)
                            font.pixelSize: Theme.fontSmall
                            color: content.colors.secondaryText
                            horizontalAlignment: Text.AlignHCenter
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                        }
                    }
                }
            }
        }
    }
}
