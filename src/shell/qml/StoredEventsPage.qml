import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

Page {
    id: page

    Component.onCompleted: calendarPage.appeared()

    header: ToolBar {
        Material.background: window.Material.background
        Material.foreground: window.Material.foreground
        Material.elevation: 0
        ColumnLayout {
            anchors.fill: parent
            anchors.leftMargin: 20
            anchors.rightMargin: 20
            spacing: 0
            Label {
                text: qsTrId("appDisplayName")
                font.pixelSize: 28
                font.bold: true
                Layout.topMargin: 12
            }
            Label {
                text: DataStore.todayDataForUI.length === 0
                      ? qsTrId("noEventForTodayString")
                      : qsTrId("eventsTodayCountString").arg(DataStore.todayDataForUI.length)
                opacity: 0.7
                Layout.bottomMargin: 8
            }
        }
    }

    ListView {
        id: list
        anchors.fill: parent
        anchors.margins: 16
        spacing: 12
        clip: true
        model: EventListModel {}

        delegate: Pane {
            width: ListView.view.width
            padding: 16
            Material.elevation: 2

            RowLayout {
                anchors.fill: parent
                spacing: 14
                Rectangle {
                    Layout.preferredWidth: 6
                    Layout.fillHeight: true
                    radius: 3
                    color: NamedColors.color(model.eventColorString, window.Material.theme === Material.Dark)
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 4
                    RowLayout {
                        Layout.fillWidth: true
                        Label {
                            text: model.eventTitle
                            font.pixelSize: 17
                            font.bold: true
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                        }
                        Label {
                            visible: model.eventStarOrNot
                            text: Symbols.glyph("star.fill")
                            font.family: Symbols.fontFamily
                            color: Material.color(Material.Amber)
                            font.pixelSize: 18
                        }
                    }
                    Label {
                        text: model.startDateText
                        opacity: 0.7
                    }
                    Label {
                        text: model.eventContent
                        wrapMode: Text.Wrap
                        maximumLineCount: 3
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                        visible: text.length > 0
                    }
                }
            }
        }

        Label {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTrId("noEventStoredString")
            opacity: 0.6
        }
    }
}
