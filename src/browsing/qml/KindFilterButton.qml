import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark.Toolkit
import TideMark.Components

// The kind filter's title as a button that opens the menu of the kinds (all, one-off, repeating
// without and with interval, starred); the current kind is checked. With `offersFilterPage` the
// menu ends with the way to the filter page.
ToolButton {
    id: button

    property string title: ""
    property int fontSize: 20
    property bool offersFilterPage: false
    readonly property bool dark: Material.theme === Material.Dark

    signal filterPageRequested()

    readonly property ThemeColors colors: Theme.colors(button.dark)
    AppStorage { id: kind; key: "TL_UIOptions_showWhichKindEventSelection"; defaultValue: 9 }

    Layout.fillWidth: true
    Layout.maximumWidth: implicitWidth
    onClicked: kindMenu.open()

    contentItem: RowLayout {
        spacing: Theme.spacingSmall
        Label {
            objectName: "kindMenuTitle"
            text: button.title
            font.pixelSize: button.fontSize
            font.weight: Font.DemiBold
            color: button.colors.primaryText
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        Label {
            text: Symbols.glyph("chevron.down")
            font.family: Symbols.fontFamily
            font.pixelSize: button.fontSize
            color: button.colors.secondaryText
        }
    }

    Menu {
        id: kindMenu
        objectName: "kindMenu"
        y: button.height
        Repeater {
            model: [9, 0, 1, 2, 3]
            delegate: MenuItem {
                required property int modelData
                objectName: "kindMenuItem" + modelData
                text: qsTrId({ 9: "menuShowAllEventStringForTimelineView",
                               0: "menuShowNotRepeatEventStringForTimelineView",
                               1: "menuShowRepeatType1EventStringForTimelineView",
                               2: "menuShowRepeatType2EventStringForTimelineView",
                               3: "menuShowStarEventStringForTimelineView" }[modelData])
                checkable: true
                checked: Number(kind.value) === modelData
                onTriggered: {
                    kind.value = modelData
                    // A tap toggles `checked` by hand: bind it to the setting again.
                    checked = Qt.binding(() => Number(kind.value) === modelData)
                }
            }
        }
        MenuSeparator { visible: button.offersFilterPage }
        MenuItem {
            objectName: "kindMenuFilters"
            visible: button.offersFilterPage
            height: visible ? implicitHeight : 0
            text: qsTrId("filterContentPageNavigationTitleStringAtFilterPage")
            onTriggered: button.filterPageRequested()
        }
    }
}
