import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The vertical stack of cards shared by verticalStackedCards and brandNewVerticalCardView: a
// plain scrolling column of the filtered list in which every card, on every frame, takes its
// offset, scale and opacity from its top within the scroll area (StackCardLayout), so that the
// cards below the front one gather behind it. Only the cards near the top are made. The index of
// the front card is kept in a setting and restored.
ListView {
    id: stack

    property bool dark: Material.theme === Material.Dark
    property alias items: cards
    property alias stackedDisplayCount: layout.stackedDisplayCount
    property alias opacityDisplayCount: layout.opacityDisplayCount
    property alias disablesOpacityEffect: layout.disablesOpacityEffect
    property alias itemHeight: layout.itemHeight
    property bool activateGlassMorphism: false
    readonly property var colorString: ["colorForUserSelection01", "colorForUserSelection02",
        "colorForUserSelection03", "colorForUserSelection04", "colorForUserSelection05"]
    readonly property alias currentItemIndex: currentItemIndexSetting.value

    signal cardRequested(string eventId)

    StackCardLayout { id: layout }
    AppStorage { id: currentItemIndexSetting; key: "VS_UIOptions_currentItemIndex"; defaultValue: 0 }

    clip: true
    spacing: 14
    topMargin: Theme.spacingMedium
    // The last card can come to the front.
    bottomMargin: Math.max(0, height - itemHeight - topMargin)
    leftMargin: Theme.spacingLarge
    rightMargin: Theme.spacingLarge
    // The cards gathered behind the front one lie further down the column.
    cacheBuffer: Math.ceil((layout.stackedDisplayCount + 1) * (itemHeight + spacing))
    boundsBehavior: Flickable.StopAtBounds
    snapMode: ListView.SnapToItem
    model: FilteredEventListModel {
        id: cards
        allItems: true
    }

    function frontIndex() {
        return Math.max(0, Math.min(count - 1, Math.round((contentY + topMargin) / (itemHeight + spacing))))
    }
    onMovementEnded: currentItemIndexSetting.value = frontIndex()
    // Back to the kept front card once there are cards and room to show them.
    property bool restored: false
    function restoreFrontCard() {
        if (restored || count === 0 || height <= 0)
            return
        restored = true
        // qmllint disable type
        // (Qt 6.4's type description of the Qt object lists callLater as a property, not a method.)
        Qt.callLater(() => {
            const index = Math.max(0, Math.min(currentItemIndexSetting.value, count - 1))
            contentY = index * (itemHeight + spacing) - topMargin
        })
        // qmllint enable type
    }
    Component.onCompleted: restoreFrontCard()
    onCountChanged: restoreFrontCard()
    onHeightChanged: restoreFrontCard()

    delegate: Item {
        id: slot
        required property string eventId
        required property int index
        width: ListView.view.width - ListView.view.leftMargin - ListView.view.rightMargin
        height: layout.itemHeight
        // The card's top within the scroll area, below its top margin.
        readonly property real minY: y - stack.contentY - stack.topMargin
        z: -index

        VerticalStackCardUnitView {
            objectName: "stackCard" + slot.index
            anchors.fill: parent
            eventId: slot.eventId
            dark: stack.dark
            activateGlassMorphism: stack.activateGlassMorphism
            opacity: layout.opacity(slot.minY)
            visible: opacity > 0 && eventInfoData.exists
            transform: [
                Scale {
                    origin.x: slot.width / 2
                    origin.y: slot.height
                    xScale: layout.scale(slot.minY)
                    yScale: xScale
                },
                Translate { y: layout.offset(slot.minY) }
            ]
            onCardRequested: id => stack.cardRequested(id)
        }
    }
}
