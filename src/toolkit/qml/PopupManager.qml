import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

// The window's popup presenter: popups at the top, in the centre or at the bottom, stacked in
// the order they were shown. show() puts a component's object in a popup and returns that popup;
// a tap outside closes the topmost; dismissAll() closes them all.
Item {
    id: manager

    property var stack: []
    readonly property int count: stack.length
    // How long a top popup (a note) stays before it closes by itself; 0 keeps it.
    property int noteDuration: 2200

    function show(component, position) {
        const popup = frame.createObject(manager, { position: position || "center",
                                                    contentComponent: component, visible: true })
        stack = stack.concat([popup])
        return popup
    }

    function dismissAll() {
        const popups = stack
        for (let i = popups.length - 1; i >= 0; --i)
            popups[i].close()
    }

    function forget(popup) {
        stack = stack.filter(p => p !== popup)
        popup.destroy()
    }

    Component {
        id: frame
        Popup {
            id: popup
            property string position: "center"
            property Component contentComponent: null
            property Item content: null
            Component.onCompleted: content = contentComponent.createObject(contentItem)
            parent: Overlay.overlay
            modal: position !== "top"
            dim: position === "center"
            padding: 0
            background: null
            implicitWidth: content ? content.implicitWidth : 0
            implicitHeight: content ? content.implicitHeight : 0
            x: (manager.width - width) / 2
            y: position === "top" ? 24
               : position === "bottom" ? manager.height - height - 24
               : (manager.height - height) / 2
            closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
            onClosed: manager.forget(popup)
            Timer {
                running: popup.opened && popup.position === "top" && manager.noteDuration > 0
                interval: manager.noteDuration
                onTriggered: popup.close()
            }
        }
    }
}
