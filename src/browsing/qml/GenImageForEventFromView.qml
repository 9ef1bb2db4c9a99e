import QtQuick
import TideMark.Toolkit
import TideMark.Components

// The view that becomes an event's picture: the card's row in a frame at least 500 points wide,
// on the page background the user chose. With the plain background nothing is drawn around the
// card, so the picture is transparent there; the height follows the content.
Item {
    id: frame
    objectName: "genImageForEventFromView"

    property string eventId
    property bool dark: false
    readonly property int padding: 24

    /// Drawn beneath everything while the picture is taken (see ShareEventImage::render).
    property color matte: "transparent"

    width: Math.max(500, card.implicitWidth + 2 * padding)
    height: card.implicitHeight + 2 * padding

    AppStorage {
        id: allAppBackgroundSettingString
        key: "UI_BGIMAGE_allAppBackgroundSettingString"
        defaultValue: "noneBlankBackgroungImage"
    }

    readonly property ThemeColors tone: Theme.colors(frame.dark)

    Rectangle {
        anchors.fill: parent
        color: frame.matte
    }

    Image {
        objectName: "shareBackground"
        anchors.fill: parent
        visible: allAppBackgroundSettingString.value === "brandNewMainViewBackgroundImage"
        source: visible ? "qrc:/images/brandNewMainViewBackgroundImage-" + (frame.dark ? "dark" : "light") + ".png" : ""
        fillMode: Image.PreserveAspectCrop
        // Synchronous, so that the picture never catches it half loaded.
        asynchronous: false
    }

    CardEventRow {
        id: card
        x: frame.padding
        y: frame.padding
        width: frame.width - 2 * frame.padding
        eventId: frame.eventId
        colors: frame.tone
        dark: frame.dark
    }
}
