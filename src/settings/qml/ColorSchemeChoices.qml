import QtQuick
import QtQuick.Controls
import TideMark.Toolkit
import TideMark.Browsing
import TideMark.Settings
import TideMark.Components

// The three colour scheme choices as rows: follow the system, always light, always dark. The
// current one is marked, by a tinted chip behind the row with a checkmark for its symbol
// (`chipMark`), else by a checkmark at the row's end. A tap gives a haptic and chooses.
Repeater {
    id: choices

    required property TimelineActions actions
    required property ThemeColors colors
    required property bool dark
    // The rows' objectName is this prefix and the scheme's number.
    property string objectNamePrefix: "appearanceChoice"
    property bool chipMark: false


    model: [
        { scheme: TimelineActions.FollowSystem, symbol: "gearshape", key: "lightAndDarkModeAUTO" },
        { scheme: TimelineActions.AlwaysLight, symbol: "sun.min", key: "lightAndDarkModeAlwaysLight" },
        { scheme: TimelineActions.AlwaysDark, symbol: "moon.zzz", key: "lightAndDarkModeAlwaysDark" }
    ]
    delegate: SettingsRow {
        id: choiceRow
        required property var modelData
        readonly property bool current: choices.actions.colorScheme === modelData.scheme
        objectName: choices.objectNamePrefix + modelData.scheme
        symbol: choices.chipMark && current ? "checkmark" : modelData.symbol
        title: qsTrId(modelData.key)
        chevron: false
        background: Rectangle {
            radius: Theme.radius
            color: choices.chipMark && choiceRow.current ? choices.colors.chipBackground : "transparent"
        }
        trailing: Label {
            visible: !choices.chipMark && choiceRow.current
            text: Symbols.glyph("checkmark")
            font.family: Symbols.fontFamily
            font.pixelSize: Theme.fontHeadline
            color: Theme.named("tabBarIconColorForSelected", choices.dark)
        }
        onClicked: {
            Haptics.impact()
            choices.actions.chooseColorScheme(choiceRow.modelData.scheme)
        }
    }
}
