import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark
import TideMark.Components

// The lock over the main screen: while the app lock is in force it covers everything under it
// and takes every tap, key and scroll. It asks for the device owner's authentication when it
// appears and again at each tap; what the system asks (a password, "Place your finger") is shown
// in its middle, and a password is typed there and sent with Enter.
FocusScope {
    id: view
    objectName: "unlockAppView"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias model: lock

    visible: lock.locked
    focus: lock.locked

    readonly property ThemeColors colors: Theme.colors(view.dark)
    AppLockModel { id: lock }

    function unlock() {
        if (lock.locked)
            lock.unlock()
    }
    Component.onCompleted: unlock()
    onVisibleChanged: unlock()

    Rectangle {
        anchors.fill: parent
        color: view.colors.pageBackground
    }

    // Takes every pointer event, so nothing reaches the screen underneath.
    MouseArea {
        objectName: "unlockTapArea"
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        preventStealing: true
        onClicked: {
            Haptics.impact()
            view.unlock()
        }
        onWheel: (wheel) => { wheel.accepted = true }
    }
    Keys.onPressed: (event) => { event.accepted = true }

    // The symbol and the reason stay in place; what the system asks appears under them.
    ColumnLayout {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: parent.height * 0.3
        width: Math.min(parent.width - 64, 360)
        spacing: 14

        Label {
            objectName: "unlockSymbol"
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 10
            text: Symbols.glyph("faceid")
            font.family: Symbols.fontFamily
            font.pixelSize: 88
            // The icon font has one weight: a light symbol is drawn in a lighter tint.
            color: view.colors.symbolTint
            opacity: 0.7
        }
        Label {
            objectName: "unlockReason"
            Layout.fillWidth: true
            text: lock.reason
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.fontTitle
            color: view.colors.primaryText
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.topMargin: 12
            visible: lock.prompt !== ""
            implicitHeight: question.implicitHeight + 20
            radius: Theme.radiusCard
            color: view.colors.cardBackground
            border.color: view.colors.cardBorder
            ColumnLayout {
                id: question
                anchors.fill: parent
                anchors.leftMargin: Theme.spacingLarge
                anchors.rightMargin: Theme.spacingLarge
                anchors.topMargin: Theme.spacingMedium
                anchors.bottomMargin: Theme.spacing
                spacing: 0
                Label {
                    objectName: "unlockPrompt"
                    Layout.fillWidth: true
                    text: lock.prompt
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.fontSmall
                    color: view.colors.secondaryText
                }
                TextField {
                    id: answerField
                    objectName: "unlockAnswerField"
                    Layout.fillWidth: true
                    visible: lock.prompt !== ""
                    echoMode: lock.secret ? TextInput.Password : TextInput.Normal
                    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                                      | Qt.ImhNoAutoUppercase
                    font.pixelSize: Theme.fontTitle
                    color: view.colors.primaryText
                    onVisibleChanged: {
                        if (visible)
                            forceActiveFocus()
                    }
                    onAccepted: {
                        Haptics.impact()
                        const typed = text
                        clear()
                        lock.answer(typed)
                    }
                }
            }
        }
        Label {
            objectName: "unlockInfo"
            Layout.fillWidth: true
            visible: text !== ""
            text: lock.info
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.fontSubhead
            color: view.colors.secondaryText
        }
        Label {
            objectName: "unlockError"
            Layout.fillWidth: true
            visible: text !== ""
            text: lock.error
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.fontSubhead
            color: view.colors.error
        }
        Label {
            objectName: "unlockHint"
            Layout.fillWidth: true
            Layout.topMargin: 6
            text: lock.available ? qsTrId("unlockAppTapToTryAgainString")
                                 : qsTrId("unlockAppUnavailableString")
            visible: !lock.busy
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.fontSmall
            color: view.colors.secondaryText
        }
        Button {
            objectName: "unlockCancelButton"
            Layout.alignment: Qt.AlignHCenter
            visible: lock.busy
            flat: true
            text: qsTrId("unlockAppCancelButtonString")
            onClicked: {
                Haptics.impact()
                lock.cancel()
            }
        }
    }
}
