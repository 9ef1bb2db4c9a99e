import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Components

// The next few days: on each appearance a loading spinner for 0.2 s while the day numbers are
// prepared, then an empty page.
Page {
    id: page
    objectName: "nextFewDaysEventView"

    readonly property bool dark: Material.theme === Material.Dark
    readonly property alias days: daysModel
    readonly property bool loading: loadingFlag.value

    NextFewDaysModel { id: daysModel }
    readonly property ThemeColors tone: Theme.colors(page.dark)
    AppStorage {
        id: loadingFlag
        key: "ALL_APP_loadingViewCallByNextFewDaysEventViewAtMainView"
        defaultValue: true
    }

    function appeared() {
        loadingFlag.value = true
        prepare.restart()
    }
    Component.onCompleted: if (visible) appeared()
    onVisibleChanged: if (visible) appeared()

    Timer {
        id: prepare
        interval: 200
        onTriggered: {
            daysModel.numArrayForLoading = [1, 2, 3, 4, 5, 6, 7]
            loadingFlag.value = false
        }
    }

    background: PageBackground {}

    header: PageHeader {
        colors: page.tone
        title: qsTrId("nextFewDaysEventViewNaviLinkStringBigTitleAtBrandNewMainView")
        leadingSymbol: "chevron.left"
        onLeadingClicked: page.StackView.view.pop()
    }

    Flickable {
        objectName: "nextFewDaysScroll"
        anchors.fill: parent
        contentHeight: height
        boundsBehavior: Flickable.StopAtBounds

        BusyIndicator {
            objectName: "loadingIndicator"
            anchors.centerIn: parent
            running: loadingFlag.value
            opacity: loadingFlag.value ? 1 : 0
            Behavior on opacity { NumberAnimation { duration: 200; easing.type: Easing.InOutQuad } }
        }
    }
}
