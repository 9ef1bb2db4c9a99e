import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Editing
import TideMark.Components

// The memos of one event under its row. The plus button opens the sheet that adds one; a swipe
// on a memo offers edit (the centred popup) and delete (at once, without confirm). The order
// button flips the list between oldest and newest first.
Page {
    id: page
    objectName: "memoForCardViewPage"

    property string eventId
    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias memoItems: memoList
    readonly property alias addSheet: addDrawer
    readonly property alias editPopup: editPopup

    function openAdd() {
        addForm.memoId = ""
        addForm.begin()
        addDrawer.open()
    }
    function openEdit(memoId) {
        editForm.memoId = memoId
        editForm.begin()
        editPopup.open()
    }

    MemoListModel {
        id: memoList
        eventId: page.eventId
    }

    readonly property ThemeColors tone: Theme.colors(page.dark)

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("navigationTitleStringAtMemoForCardViewPage")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
        RowButton {
            objectName: "orderButton"
            symbol: memoList.ascendingForList ? "arrow.down.to.line" : "arrow.up.to.line"
            tint: page.tone.symbolTint
            onClicked: memoList.toggleOrder()
        }
        RowButton {
            objectName: "plusButton"
            symbol: "plus"
            tint: page.tone.symbolTint
            onClicked: page.openAdd()
        }
    }

    ListView {
        id: list
        objectName: "memoList"
        anchors.fill: parent
        anchors.leftMargin: Theme.spacingLarge
        anchors.rightMargin: Theme.spacingLarge
        spacing: 10
        model: memoList
        boundsBehavior: Flickable.StopAtBounds
        // A rebuilt list (a new order, an edited memo) fades its cards in.
        populate: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 220 } }
        add: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 200 } }
        displaced: Transition { NumberAnimation { properties: "y"; duration: 200 } }

        header: ColumnLayout {
            width: list.width
            spacing: 0
            CardEventRow {
                objectName: "eventRow"
                eventId: page.eventId
                colors: page.tone
                dark: page.dark
                Layout.fillWidth: true
                Layout.topMargin: 8
            }
            Label {
                objectName: "emptyText"
                visible: memoList.count === 0
                text: qsTrId("noMemoStringAtMemoForCardViewPage")
                color: page.tone.secondaryText
                font.pixelSize: Theme.fontBody
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Layout.topMargin: 40
            }
            Item { implicitHeight: 14 }
        }
        footer: Item { height: 24 }

        delegate: SwipeDelegate {
            id: memoCard
            required property string memoId
            required property string title
            required property string content
            required property string dateText
            required property int index
            objectName: "memo" + index
            width: list.width
            topPadding: 13
            bottomPadding: 13
            leftPadding: 16
            rightPadding: 16

            background: Rectangle {
                radius: Theme.radiusCard
                color: page.tone.cardBackground
                border.color: page.tone.cardBorder
                border.width: 1
            }
            contentItem: ColumnLayout {
                spacing: Theme.spacingSmall
                Label {
                    text: memoCard.title
                    font.pixelSize: Theme.fontTitle
                    font.weight: Font.DemiBold
                    color: page.tone.primaryText
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    visible: text.length > 0
                    text: memoCard.content
                    font.pixelSize: Theme.fontSubhead
                    color: page.tone.secondaryText
                    wrapMode: Text.Wrap
                    maximumLineCount: 4
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    objectName: "memoDate"
                    text: memoCard.dateText
                    font.pixelSize: Theme.fontCaption
                    color: page.tone.symbolTint
                }
            }

            // The actions behind the card: SwipeDelegate hands their taps over through its
            // attached clicked signal.
            swipe.right: Row {
                anchors.right: parent.right
                height: parent.height
                spacing: 0
                Rectangle {
                    objectName: "editAction"
                    width: 68
                    height: parent.height
                    radius: Theme.radiusCard
                    color: page.tone.symbolTint
                    opacity: SwipeDelegate.pressed ? 0.75 : 1
                    SwipeDelegate.onClicked: {
                        memoCard.swipe.close()
                        page.openEdit(memoCard.memoId)
                    }
                    Label {
                        anchors.centerIn: parent
                        text: Symbols.glyph("square.and.pencil")
                        font.family: Symbols.fontFamily
                        font.pixelSize: 24
                        color: "white"
                    }
                }
                Rectangle {
                    objectName: "deleteAction"
                    width: 68
                    height: parent.height
                    radius: Theme.radiusCard
                    color: Theme.named("colorForUserSelection01", page.dark)
                    opacity: SwipeDelegate.pressed ? 0.75 : 1
                    SwipeDelegate.onClicked: {
                        Haptics.impact()
                        memoList.deleteMemo(memoCard.memoId)
                    }
                    Label {
                        anchors.centerIn: parent
                        text: Symbols.glyph("xmark")
                        font.family: Symbols.fontFamily
                        font.pixelSize: 24
                        color: "white"
                    }
                }
            }
        }
    }

    Drawer {
        id: addDrawer
        objectName: "addMemoSheet"
        edge: Qt.BottomEdge
        width: page.width
        height: Math.min(page.height * 0.62, 540)
        parent: Overlay.overlay
        dim: true
        MemoForCardViewAddMemoHalfPage {
            id: addForm
            anchors.fill: parent
            eventId: page.eventId
            onCloseRequested: addDrawer.close()
        }
    }

    Popup {
        id: editPopup
        objectName: "editMemoPopup"
        parent: Overlay.overlay
        modal: true
        dim: true
        padding: 0
        width: Math.min(parent.width - 32, 380)
        height: Math.min(parent.height - 96, editForm.implicitHeight)
        x: (parent.width - width) / 2
        y: (parent.height - height) / 2
        background: Item {}
        CenterPopupForAddOrEditMemoView {
            id: editForm
            anchors.fill: parent
            eventId: page.eventId
            onCloseRequested: editPopup.close()
        }
    }
}
