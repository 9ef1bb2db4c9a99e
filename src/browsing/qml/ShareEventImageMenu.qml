import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Dialogs
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// Sharing one event as a picture: on opening, the event's card is rendered off screen
// (GenImageForEventFromView) while a loading indicator turns; then the picture shows with the
// three ways to hand it on: save it to a file, copy it, or open it with another application.
// Set `eventId` and call open().
Popup {
    id: popup
    objectName: "shareEventImageMenu"

    property string eventId
    property bool dark: Material.theme === Material.Dark
    readonly property alias share: shareImage
    readonly property bool loadingViewToggleForShareButton: shareImage.loadingViewToggleForShareButton || renderDelay.running

    Material.theme: dark ? Material.Dark : Material.Light
    readonly property ThemeColors colors: Theme.colors(popup.dark)
    EventRowModel { id: rowData; eventId: popup.eventId }

    parent: Overlay.overlay
    modal: true
    width: parent ? parent.width : 390
    height: parent ? Math.min(parent.height * 0.9, column.implicitHeight + 48) : 700
    y: parent ? parent.height - height : 0
    padding: 0
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    enter: Transition { NumberAnimation { property: "y"; from: popup.parent ? popup.parent.height : 800; to: popup.parent ? popup.parent.height - popup.height : 0; duration: 220; easing.type: Easing.OutCubic } }
    exit: Transition { NumberAnimation { property: "y"; to: popup.parent ? popup.parent.height : 800; duration: 180 } }

    background: Rectangle {
        color: popup.colors.pageBackground
        radius: 20
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 20
            color: parent.color
        }
    }

    ShareEventImage {
        id: shareImage
        onImageChanged: popup.dropCard()
        onFailed: popup.dropCard()
    }

    property Item card: null
    Component {
        id: cardComponent
        GenImageForEventFromView {}
    }

    function dropCard() {
        if (card) {
            card.destroy()
            card = null
        }
    }

    /// Lays the card out off screen, left of the window, and renders it once it has its size.
    function makeImage() {
        dropCard()
        if (!rowData.exists || !popup.parent)
            return
        card = cardComponent.createObject(popup.parent, { eventId: popup.eventId, dark: popup.dark })
        card.x = -card.width - 64
        renderDelay.restart()
    }
    Timer {
        id: renderDelay
        interval: 60
        onTriggered: if (popup.card) shareImage.make(popup.card)
    }

    onAboutToShow: makeImage()
    onClosed: dropCard()

    FileDialog {
        id: saveDialog
        objectName: "saveImageDialog"
        title: qsTrId("shareImageSaveDialogTitle")
        fileMode: FileDialog.SaveFile
        nameFilters: ["PNG (*.png)"]
        currentFolder: shareImage.picturesFolder
        selectedFile: shareImage.picturesFolder + "/" + (rowData.title.length > 0 ? rowData.title.replace(/[\/\\]/g, "-") : "event") + ".png"
        onAccepted: status.text = shareImage.saveTo(selectedFile) ? qsTrId("shareImageSavedNote")
                                                                 : qsTrId("shareImageFailedNote")
    }

    ColumnLayout {
        id: column
        x: 20
        y: 20
        width: popup.width - 40
        spacing: 14

        Label {
            text: qsTrId("shareImageMenuTitle")
            font.pixelSize: Theme.fontHeader
            font.weight: Font.Bold
            color: popup.colors.primaryText
        }

        Rectangle {
            objectName: "sharePreview"
            Layout.fillWidth: true
            Layout.preferredHeight: shareImage.imageSize.width > 0
                                    ? Math.min(260, width * shareImage.imageSize.height / shareImage.imageSize.width)
                                    : 140
            radius: Theme.radius
            color: popup.colors.chipBackground

            Image {
                anchors.fill: parent
                anchors.margins: 6
                visible: !popup.loadingViewToggleForShareButton && String(shareImage.imageUrl).length > 0
                source: visible ? shareImage.imageUrl : ""
                cache: false
                fillMode: Image.PreserveAspectFit
                smooth: true
                mipmap: true
            }
            ColumnLayout {
                objectName: "shareLoadingView"
                anchors.centerIn: parent
                visible: popup.loadingViewToggleForShareButton
                BusyIndicator {
                    running: parent.visible
                    Layout.alignment: Qt.AlignHCenter
                }
                Label {
                    text: qsTrId("shareImageMakingNote")
                    color: popup.colors.secondaryText
                    font.pixelSize: Theme.fontSubhead
                    Layout.alignment: Qt.AlignHCenter
                }
            }
        }

        Label {
            id: status
            objectName: "shareStatus"
            visible: text.length > 0
            color: popup.colors.secondaryText
            font.pixelSize: Theme.fontSmall
            Layout.fillWidth: true
            wrapMode: Text.Wrap
        }

        Repeater {
            model: [
                { name: "saveImageButton", symbol: "square.and.arrow.down", key: "shareImageSaveButton" },
                { name: "copyImageButton", symbol: "doc.on.doc", key: "shareImageCopyButton" },
                { name: "openImageButton", symbol: "square.and.arrow.up", key: "shareImageOpenButton" }
            ]
            delegate: ItemDelegate {
                id: action
                required property var modelData
                objectName: modelData.name
                enabled: !popup.loadingViewToggleForShareButton && shareImage.imageSize.width > 0
                Layout.fillWidth: true
                implicitHeight: 52
                background: Rectangle {
                    radius: Theme.radiusCard
                    color: popup.colors.cardBackground
                    border.color: popup.colors.cardBorder
                }
                contentItem: RowLayout {
                    spacing: Theme.spacingMedium
                    opacity: action.enabled ? 1 : 0.45
                    Label {
                        text: Symbols.glyph(action.modelData.symbol)
                        font.family: Symbols.fontFamily
                        font.pixelSize: Theme.fontHeader
                        color: popup.colors.symbolTint
                    }
                    Label {
                        text: qsTrId(action.modelData.key)
                        font.pixelSize: Theme.fontBodyLarge
                        color: popup.colors.primaryText
                        Layout.fillWidth: true
                    }
                }
                onClicked: {
                    if (modelData.name === "saveImageButton") {
                        saveDialog.open()
                    } else if (modelData.name === "copyImageButton") {
                        shareImage.copyToClipboard()
                        status.text = qsTrId("shareImageCopiedNote")
                    } else {
                        status.text = shareImage.openWithOtherApp() ? ""
                                                                    : qsTrId("shareImageFailedNote")
                    }
                }
            }
        }

        Item { implicitHeight: 8 }
    }
}
