import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Browsing
import TideMark.Components

// The card of one event: its row, its next dates, the colour row, the rows that open the pages
// which change one part of it, the star and delete row, and the week or month grid of a weekly or
// monthly rule. An event deleted while the card is open leaves the empty row and nothing to act
// on.
Page {
    id: page
    objectName: "cardViewForEventObject"

    property string eventId
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias card: cardModel
    readonly property bool showsRuleGrid: ruleOfEvent.repeating
                                          && (ruleOfEvent.eventType === 2 || ruleOfEvent.eventType === 3)

    function open(editPage) {
        page.StackView.view.push(editPage, {eventId: page.eventId})
    }

    CardViewModel {
        id: cardModel
        eventId: page.eventId
        // An event deleted elsewhere closes the pages opened from the card, back to its empty
        // row.
        property bool seen: false
        onChanged: {
            if (exists) {
                seen = true
                return
            }
            const stack = page.StackView.view
            if (seen && stack && !stack.busy && stack.currentItem !== page
                    && stack.find(p => p === page))
                stack.pop(page)
        }
    }

    SummaryViewModel {
        id: ruleOfEvent
        eventId: page.eventId
    }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("navigationTitleStringAtCardViewForEventObject")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
        RowButton {
            objectName: "editTitleContentToolbarButton"
            visible: cardModel.exists
            symbol: "eraser.line.dashed"
            tint: page.tone.symbolTint
            onClicked: page.open(editEventTitleContentPage)
        }
    }

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 40
        boundsBehavior: Flickable.StopAtBounds

        ColumnLayout {
            id: column
            x: 16
            y: 8
            width: parent.width - 32
            spacing: 18

            CardEventRow {
                objectName: "eventRow"
                eventId: page.eventId
                colors: page.tone
                dark: page.dark
                Layout.fillWidth: true
            }

            SectionCard {
                objectName: "nextDatesSection"
                visible: cardModel.exists && cardModel.nextDates.length > 0
                title: qsTrId("nextDatesTitleStringAtCardViewForEventObject")
                colors: page.tone
                Layout.fillWidth: true
                Repeater {
                    model: cardModel.nextDates
                    ChevronRow {
                        required property string modelData
                        required property int index
                        objectName: "nextDate" + index
                        colors: page.tone
                        chevron: false
                        label: modelData
                        separator: index < cardModel.nextDates.length - 1
                    }
                }
            }

            SectionCard {
                visible: cardModel.exists
                title: qsTrId("colorTitleStringAtCardViewForEventObject")
                colors: page.tone
                Layout.fillWidth: true
                RowLayout {
                    objectName: "colorRow"
                    Layout.fillWidth: true
                    Layout.margins: 10
                    spacing: 0
                    Repeater {
                        model: ["", ...cardModel.colorKeys]
                        AbstractButton {
                            id: swatch
                            required property string modelData
                            required property int index
                            readonly property bool chosen: cardModel.colorName === modelData
                            objectName: "colorButton" + index
                            Layout.fillWidth: true
                            implicitHeight: 44
                            focusPolicy: Qt.NoFocus
                            onClicked: {
                                if (cardModel.setColor(modelData))
                                    Haptics.impact()
                            }
                            contentItem: Item {
                                Rectangle {
                                    anchors.centerIn: parent
                                    width: 34
                                    height: 34
                                    radius: 17
                                    color: swatch.modelData === "" ? "transparent"
                                           : Theme.named(swatch.modelData, page.dark)
                                    border.width: swatch.modelData === "" ? 2 : 0
                                    border.color: page.tone.secondaryText
                                    Rectangle {
                                        // The "no colour" swatch is crossed out.
                                        visible: swatch.modelData === ""
                                        anchors.centerIn: parent
                                        width: 2
                                        height: parent.height - 6
                                        rotation: 45
                                        color: page.tone.secondaryText
                                    }
                                }
                                Rectangle {
                                    anchors.centerIn: parent
                                    width: 42
                                    height: 42
                                    radius: 21
                                    visible: swatch.chosen
                                    color: "transparent"
                                    border.width: 2
                                    border.color: page.tone.primaryText
                                }
                            }
                        }
                    }
                }
            }

            SectionCard {
                visible: cardModel.exists
                title: qsTrId("editSectionTitleStringAtCardViewForEventObject")
                colors: page.tone
                Layout.fillWidth: true
                ChevronRow {
                    objectName: "titleContentRow"
                    colors: page.tone
                    label: qsTrId("editTitleContentAtCardViewForEventObjcetTitleString")
                    onClicked: page.open(editEventTitleContentPage)
                }
                ChevronRow {
                    objectName: "startDateRow"
                    colors: page.tone
                    label: qsTrId("editStartDateAtCardViewForEventObjcetTitleString")
                    onClicked: page.open(editEventStartDatePage)
                }
                ChevronRow {
                    objectName: "repeatRow"
                    colors: page.tone
                    label: qsTrId("addNewEventPageContentString02")
                    onClicked: page.open(editRepeatEventSettingPage)
                }
                ChevronRow {
                    objectName: "notiRow"
                    colors: page.tone
                    label: qsTrId("addNewEventPageContentString03")
                    onClicked: page.open(editNotiSettingPage)
                }
                ChevronRow {
                    objectName: "shareRow"
                    colors: page.tone
                    separator: false
                    label: qsTrId("editShareAtCardViewForEventObjcetTitleString")
                    onClicked: page.open(editShareSettingPage)
                }
            }

            Rectangle {
                objectName: "starDeleteRow"
                visible: cardModel.exists
                Layout.fillWidth: true
                implicitHeight: 60
                radius: Theme.radiusCard
                color: page.tone.cardBackground
                border.color: page.tone.cardBorder
                border.width: 1

                RowLayout {
                    anchors.fill: parent
                    anchors.leftMargin: Theme.spacing
                    anchors.rightMargin: Theme.spacing
                    spacing: Theme.spacingSmall

                    RowButton {
                        objectName: "starButton"
                        symbol: cardModel.starred ? "star.fill" : "star.slash.fill"
                        tint: cardModel.starred ? page.tone.starSymbol : page.tone.secondaryText
                        SequentialAnimation on scale {
                            id: bounce
                            running: false
                            NumberAnimation { to: 1.3; duration: 110; easing.type: Easing.OutQuad }
                            NumberAnimation { to: 1.0; duration: 160; easing.type: Easing.InQuad }
                        }
                        Connections {
                            target: cardModel
                            function onAnimationToggleChanged() { bounce.restart() }
                        }
                        onClicked: {
                            if (cardModel.toggleStar())
                                Haptics.impact()
                        }
                    }
                    Label {
                        text: cardModel.starred ? qsTrId("starredStringAtCardViewForEventObject")
                                                : qsTrId("notStarredStringAtCardViewForEventObject")
                        font.pixelSize: Theme.fontBody
                        color: page.tone.primaryText
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }
                    RowButton {
                        objectName: "trashButton"
                        visible: !cardModel.deleteArmed
                        symbol: "trash"
                        tint: Theme.named("colorForUserSelection01", page.dark)
                        onClicked: cardModel.armDelete()
                    }
                    AbstractButton {
                        id: confirm
                        objectName: "deleteConfirmButton"
                        visible: cardModel.deleteArmed
                        focusPolicy: Qt.NoFocus
                        implicitWidth: confirm.contentItem.implicitWidth + 28
                        implicitHeight: 36
                        onClicked: {
                            if (cardModel.confirmDelete()) {
                                Haptics.impact()
                                page.StackView.view.pop()
                            }
                        }
                        background: Rectangle {
                            radius: 18
                            color: Theme.named("colorForUserSelection01", page.dark)
                            opacity: confirm.pressed ? 0.75 : 1
                        }
                        contentItem: Label {
                            text: qsTrId("alertButtonStringForForDeleteThisEventAtCardView")
                            font.pixelSize: Theme.fontBody
                            font.weight: Font.DemiBold
                            color: "white"
                            horizontalAlignment: Text.AlignHCenter
                            verticalAlignment: Text.AlignVCenter
                        }
                    }
                    RowButton {
                        objectName: "deleteCancelButton"
                        visible: cardModel.deleteArmed
                        symbol: "xmark"
                        tint: page.tone.secondaryText
                        onClicked: cardModel.disarmDelete()
                    }
                }
            }

            SectionCard {
                objectName: "ruleSection"
                visible: cardModel.exists && page.showsRuleGrid
                title: qsTrId("addNewEventPageContentString02")
                colors: page.tone
                Layout.fillWidth: true
                SummaryViewSubPageForMonthlyAndWeeklyEvent {
                    eventType: page.showsRuleGrid ? ruleOfEvent.eventType : 0
                    eventArrayData: ruleOfEvent.ruleArchive
                    dark: page.dark
                    Layout.fillWidth: true
                    Layout.margins: 12
                }
            }
        }
    }

    // The pages and popups this one opens.
    Component { id: editEventTitleContentPage; EditEventTitleContentPage {} }
    Component { id: editEventStartDatePage; EditEventStartDatePage {} }
    Component { id: editRepeatEventSettingPage; EditRepeatEventSettingPage {} }
    Component { id: editNotiSettingPage; EditNotiSettingPage {} }
    Component { id: editShareSettingPage; EditShareSettingPage {} }
}
