import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The events of the filtered list as cards across: one card in the middle, its neighbours
// smaller, dimmer and, with `isRotationEnabled`, turned by how far they are from the middle; the
// indicator below says which card shows. Only the cards near the middle are made. A tap on a
// card opens the event's card page.
Page {
    id: page
    objectName: "stackCardView"

    readonly property bool dark: Material.theme === Material.Dark
    property bool isRotationEnabled: true
    property bool showsIndicator: true
    readonly property alias eventItems: eventItemsModel

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("stackCardViewTitle")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
        KindFilterButton {
            title: eventItemsModel.kindMenuTitle
            fontSize: 14
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.bottomMargin: 24
        spacing: Theme.spacingMedium

        ListView {
            id: across
            objectName: "stackCardsAcross"
            Layout.fillWidth: true
            Layout.fillHeight: true
            orientation: ListView.Horizontal
            clip: true
            spacing: -40
            snapMode: ListView.SnapOneItem
            highlightRangeMode: ListView.StrictlyEnforceRange
            readonly property real cardWidth: Math.min(width - 96, 320)
            preferredHighlightBegin: (width - cardWidth) / 2
            preferredHighlightEnd: (width + cardWidth) / 2
            boundsBehavior: Flickable.StopAtBounds
            model: FilteredEventListModel {
                id: eventItemsModel
                allItems: true
            }

            delegate: Item {
                id: slot
                required property string eventId
                required property int index
                width: across.cardWidth
                height: ListView.view.height
                // How far the card is from the middle, in cards (negative: left of it).
                readonly property real distance: (x - across.contentX - across.preferredHighlightBegin) / (across.cardWidth + across.spacing)
                readonly property real nearness: Math.max(0, 1 - Math.abs(distance))
                z: 100 - Math.round(Math.abs(distance) * 10)

                StackCardUnitView {
                    objectName: "acrossCard" + slot.index
                    width: parent.width
                    height: Math.min(parent.height - 24, 300)
                    anchors.centerIn: parent
                    eventId: slot.eventId
                    dark: page.dark
                    scale: 0.86 + 0.14 * slot.nearness
                    opacity: 0.55 + 0.45 * slot.nearness
                    rotation: page.isRotationEnabled ? Math.max(-12, Math.min(12, slot.distance * 8)) : 0
                    onCardRequested: id => page.StackView.view.push(cardViewForEventObject, { eventId: id })
                }
            }
        }

        PageIndicator {
            objectName: "stackCardIndicator"
            visible: page.showsIndicator && across.count > 1 && across.count <= 12
            count: across.count
            currentIndex: across.currentIndex
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "stackCardPosition"
            visible: page.showsIndicator && across.count > 12
            text: qsTrId("stackCardPositionText").arg(across.currentIndex + 1).arg(across.count)
            color: page.tone.secondaryText
            font.pixelSize: Theme.fontSmall
            Layout.alignment: Qt.AlignHCenter
        }
    }

    Rectangle {
        objectName: "emptyBox"
        visible: across.count === 0
        x: 16
        y: 12
        width: parent.width - 32
        height: 140
        radius: Theme.radiusLarge
        color: page.tone.cardBackground
        border.color: page.tone.cardBorder
        Label {
            anchors.centerIn: parent
            width: parent.width - 32
            text: qsTrId("notiObjectsCountZero")
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            font.pixelSize: Theme.fontBody
            color: page.tone.secondaryText
        }
    }

    // The pages and popups this one opens.
    Component { id: cardViewForEventObject; CardViewForEventObject {} }
}
