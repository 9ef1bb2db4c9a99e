import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import TideMark

// The one window: a stack of pages with the main screen at its bottom, the popup presenter above
// it.
ApplicationWindow {
    id: window
    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: qsTrId("appDisplayName")

    // "light" or "dark" while pictures of the pages are taken; "" follows the user's theme.
    property string pictureScheme: ""
    readonly property string scheme: pictureScheme !== "" ? pictureScheme
                                                          : TideMarkApp.preferredColorScheme
    readonly property bool darkScheme: Material.theme === Material.Dark

    Material.theme: scheme === "light" ? Material.Light
                  : scheme === "dark" ? Material.Dark
                  : Material.System
    Material.accent: NamedColors.color("selectedDateBackground", darkScheme)

    // Shows one page for a picture without touching the persisted tab; empty strings go back.
    function showForPicture(tab, pictureSchemeName) {
        mainView.pictureTab = tab
        pictureScheme = pictureSchemeName
    }

    // Pushes a page of the window's folder for a picture, at once and without animation; an
    // empty name goes back to the main screen.
    function showPageForPicture(fileName, properties, pictureSchemeName) {
        pictureScheme = pictureSchemeName
        appStack.pop(null, StackView.Immediate)
        if (fileName !== "")
            appStack.push(Qt.resolvedUrl(fileName), properties, StackView.Immediate)
    }

    // The pages of the window: the main screen at the bottom, the pages it opens above it.
    StackView {
        id: appStack
        objectName: "appStack"
        anchors.fill: parent
        initialItem: MainView {
            id: mainView
            objectName: "mainView"
            darkScheme: window.darkScheme
            popups: popupManager
        }
    }

    PopupManager {
        id: popupManager
        objectName: "popupManager"
        anchors.fill: parent
    }

    // The app lock: while it is in force it covers the pages and takes all input.
    UnlockAppView {
        anchors.fill: parent
    }
}
