import QtQuick
import QtQuick.Controls.Material
import TideMark.Toolkit
import TideMark.Components

// The background of every page: the plain page colour, or the app's background picture when the
// user chose it ("brandNewMainViewBackgroundImage"; "noneBlankBackgroungImage" is the plain one).
// Use it as a page's `background`; it follows the page's light or dark theme.
Rectangle {
    id: background

    readonly property bool dark: Material.theme === Material.Dark
    readonly property bool showsImage: choice.value === "brandNewMainViewBackgroundImage"

    color: Theme.colors(dark).pageBackground

    AppStorage {
        id: choice
        key: "UI_BGIMAGE_allAppBackgroundSettingString"
        defaultValue: "noneBlankBackgroungImage"
    }

    Image {
        objectName: "backgroundImage"
        anchors.fill: parent
        visible: background.showsImage
        source: visible ? "qrc:/images/brandNewMainViewBackgroundImage-" + (background.dark ? "dark" : "light") + ".png" : ""
        fillMode: Image.PreserveAspectCrop
        asynchronous: true
        cache: true
    }
}
