import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The events of the filtered list as a vertical stack of cards (StackedCardsList); a tap on a
// card opens the event's card page. Without events the "nothing here" box shows.
Page {
    id: page
    objectName: "verticalStackedCards"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias stack: cards
    readonly property alias items: cards.items

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("verticalStackedCardsTitle")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
        KindFilterButton {
            title: cards.items.kindMenuTitle
            fontSize: 14
        }
    }

    StackedCardsList {
        id: cards
        objectName: "stackedCards"
        anchors.fill: parent
        dark: page.dark
        stackedDisplayCount: 2; opacityDisplayCount: 2; itemHeight: 210; spacing: 14
        onCardRequested: id => page.StackView.view.push(cardViewForEventObject, { eventId: id })
    }

    Rectangle {
        objectName: "emptyBox"
        visible: cards.count === 0
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
