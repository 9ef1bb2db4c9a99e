import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The list tab: every event under the shared filters. Each appearance clears the kind filter
// (back to 9, all kinds) so the list always opens unfiltered by kind.
Item {
    id: page
    objectName: "eventListPageView"

    property bool darkScheme: false

    // A row's buttons and tap, passed up to whoever opens pages.
    signal editRequested(string eventId)
    signal cardRequested(string eventId)
    signal memoRequested(string eventId)
    signal timelineRequested()
    property bool shown: false
    readonly property bool hasRowView: TideMarkApp.hasQmlFile("ListRowViewForTimeline.qml")

    AppStorage {
        id: kindSelection
        key: "TL_UIOptions_showWhichKindEventSelection"
        defaultValue: 9
    }

    function appeared() {
        kindSelection.value = 9
        events.reload()
    }
    onShownChanged: if (shown) appeared()
    Component.onCompleted: if (shown) appeared()

    FilteredEventListModel { id: events }

    BrowsingColors { id: colors; dark: page.darkScheme }

    // The kind filter's title, a menu of the kinds, and the way to the timeline.
    RowLayout {
        id: listHeader
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: 12
        anchors.rightMargin: 8
        spacing: 4
        KindFilterButton {
            objectName: "kindFilterButton"
            title: events.kindMenuTitle
            fontSize: 17
        }
        Item { Layout.fillWidth: true }
        ToolButton {
            objectName: "timelineButton"
            onClicked: page.timelineRequested()
            contentItem: RowLayout {
                spacing: 6
                Label {
                    text: Symbols.glyph("timeline.selection")
                    font.family: Symbols.fontFamily
                    font.pixelSize: 20
                    color: NamedColors.color("tabBarIconColorForSelected", page.darkScheme)
                }
                Label {
                    text: qsTrId("timelineButtonStringAtEventList")
                    font.pixelSize: 15
                    color: NamedColors.color("tabBarIconColorForSelected", page.darkScheme)
                }
            }
        }
    }

    ListView {
        id: list
        objectName: "eventList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: listHeader.bottom
        anchors.bottom: parent.bottom
        clip: true
        spacing: 8
        leftMargin: 16
        rightMargin: 16
        topMargin: 10
        bottomMargin: 10
        model: events
        delegate: Loader {
            id: row
            required property string eventId
            width: ListView.view.width - ListView.view.leftMargin - ListView.view.rightMargin
            Component.onCompleted: {
                if (page.hasRowView)
                    setSource("ListRowViewForTimeline.qml", { eventId: eventId })
                else
                    sourceComponent = plainRow
            }
            Connections {
                target: row.item
                ignoreUnknownSignals: true
                function onEditRequested(id) { page.editRequested(id) }
                function onCardRequested(id) { page.cardRequested(id) }
                function onMemoRequested(id) { page.memoRequested(id) }
            }
            Component {
                id: plainRow
                Pane {
                    padding: 14
                    leftPadding: 20
                    rightPadding: 20
                    background: null
                    EventRowModel { id: rowModel; eventId: row.eventId }
                    RowLayout {
                        anchors.fill: parent
                        spacing: 12
                        Rectangle {
                            implicitWidth: 6
                            implicitHeight: 22
                            radius: 3
                            color: NamedColors.color(rowModel.colorName === "" || rowModel.colorName === "-"
                                                     ? "default" : rowModel.colorName, page.darkScheme)
                        }
                        Label {
                            Layout.fillWidth: true
                            text: rowModel.title
                            font.pixelSize: 17
                            elide: Text.ElideRight
                        }
                    }
                }
            }
        }

        Label {
            anchors.centerIn: parent
            width: parent.width - 40
            visible: list.count === 0
            text: qsTrId("noEventStoredString")
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            opacity: 0.6
            font.pixelSize: 16
        }
    }
}
