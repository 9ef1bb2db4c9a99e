import QtQuick
import QtQuick.Controls.Material
import TideMark.Widget
import TideMark.Components

// One widget on the desktop: a frameless window that a drag moves and the corner grip resizes.
// A tap opens the app; a right click opens the widget's settings.
Window {
    id: window

    required property WidgetModel model
    property bool configureAtStart: false
    property rect keptGeometry: Qt.rect(0, 0, 0, 0)
    property alias configureDialog: dialog
    readonly property bool lock: model.size === "lock"
    readonly property ThemeColors colors: Theme.colors(window.model.dark)

    readonly property size baseSize: model.size === "medium" ? Qt.size(340, 160)
                                   : model.size === "large" ? Qt.size(340, 360)
                                   : model.size === "lock" ? Qt.size(170, 72)
                                   : Qt.size(160, 160)

    width: keptGeometry.width > 0 ? keptGeometry.width : baseSize.width
    height: keptGeometry.height > 0 ? keptGeometry.height : baseSize.height
    minimumWidth: baseSize.width / 2
    minimumHeight: baseSize.height / 2
    flags: Qt.FramelessWindowHint | Qt.WindowStaysOnBottomHint
    color: "transparent"
    title: qsTrId("widgetEntryName")
    visible: true

    Material.theme: model.dark ? Material.Dark : Material.Light
    Material.accent: Theme.named("selectedDateBackground", model.dark)

    Rectangle {
        id: card
        anchors.fill: parent
        radius: window.lock ? height / 2 : 22
        color: window.lock ? window.colors.chipBackground : window.colors.cardBackground
        border.color: window.colors.cardBorder
        clip: true

        Loader {
            anchors.fill: parent
            anchors.margins: window.lock ? 10 : 14
            anchors.leftMargin: window.lock ? 22 : 14
            anchors.rightMargin: window.lock ? 22 : 14
            sourceComponent: window.model.status !== WidgetModel.Ready ? note
                           : window.model.size === "large" ? large : face
        }
    }

    Component {
        id: face
        EventFace { model: window.model; colors: window.colors }
    }
    Component {
        id: large
        LargeList { model: window.model; colors: window.colors }
    }
    Component {
        id: note
        NoteFace { model: window.model; colors: window.colors }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        property point pressedAt
        property bool moved: false
        onPressed: (mouse) => {
            pressedAt = Qt.point(mouse.x, mouse.y)
            moved = false
            if (mouse.button === Qt.RightButton)
                dialog.show()
        }
        onPositionChanged: (mouse) => {
            if (!moved && (Math.abs(mouse.x - pressedAt.x) > 6 || Math.abs(mouse.y - pressedAt.y) > 6)) {
                moved = true
                window.startSystemMove()
            }
        }
        onReleased: (mouse) => {
            if (mouse.button === Qt.LeftButton && !moved)
                window.model.openApp()
        }
    }

    // The resize grip in the lower right corner.
    MouseArea {
        width: 18
        height: 18
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        cursorShape: Qt.SizeFDiagCursor
        onPressed: window.startSystemResize(Qt.RightEdge | Qt.BottomEdge)
    }

    // The place is kept once the window has come to rest.
    Timer {
        id: keep
        interval: 500
        onTriggered: window.model.keepGeometry(window.x, window.y, window.width, window.height)
    }
    onXChanged: if (visible) keep.restart()
    onYChanged: if (visible) keep.restart()
    onWidthChanged: if (visible) keep.restart()
    onHeightChanged: if (visible) keep.restart()

    ConfigureDialog {
        id: dialog
        model: window.model
        colors: window.colors
        onSizeChosen: {
            window.width = window.baseSize.width
            window.height = window.baseSize.height
        }
    }

    Component.onCompleted: {
        if (keptGeometry.width > 0) {
            x = keptGeometry.x
            y = keptGeometry.y
        }
        if (configureAtStart)
            dialog.show()
    }
}
