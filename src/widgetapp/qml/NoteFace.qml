import QtQuick
import TideMark.Widget

// What a widget says instead of an event: the app has published nothing readable yet, the
// chosen event was deleted, or no event is chosen.
Item {
    id: note

    required property var model
    required property var colors

    Text {
        anchors.fill: parent
        text: note.model.status === WidgetModel.NoData ? qsTrId("widgetNoDataText")
            : note.model.status === WidgetModel.Deleted ? qsTrId("widgetEventDeletedText")
            : qsTrId("widgetChooseEventText")
        color: note.colors.secondaryText
        font.pixelSize: note.model.size === "lock" ? 12 : 15
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
