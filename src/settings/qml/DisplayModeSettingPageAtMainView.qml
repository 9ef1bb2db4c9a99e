import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import TideMark

// The appearance choice as a page of the main screen: follow the system, always light or always
// dark, the current one checked.
SettingsPage {
    id: page
    objectName: "displayModeSettingPageAtMainView"
    title: qsTrId("lightAndDarkMode")

    TimelineActions { id: actions }
    AppStorage { id: colorSchemeSetToAlwaysLight; key: "colorSchemeSetToAlwaysLight"; defaultValue: false }
    AppStorage { id: colorSchemeSetToAlwaysDark; key: "colorSchemeSetToAlwaysDark"; defaultValue: false }
    AppStorage { id: colorSchemeSetToFollowSystem; key: "colorSchemeSetToFollowSystem"; defaultValue: false }

    SettingsGroup {
        Repeater {
            model: [
                { scheme: TimelineActions.FollowSystem, symbol: "gearshape", key: "lightAndDarkModeAUTO" },
                { scheme: TimelineActions.AlwaysLight, symbol: "sun.min", key: "lightAndDarkModeAlwaysLight" },
                { scheme: TimelineActions.AlwaysDark, symbol: "moon.zzz", key: "lightAndDarkModeAlwaysDark" }
            ]
            delegate: SettingsRow {
                id: choiceRow
                required property var modelData
                readonly property bool current: [colorSchemeSetToAlwaysLight, colorSchemeSetToAlwaysDark,
                                                 colorSchemeSetToFollowSystem][modelData.scheme].value === true
                objectName: "displayModeChoice" + modelData.scheme
                symbol: modelData.symbol
                title: qsTrId(modelData.key)
                chevron: false
                trailing: Label {
                    visible: choiceRow.current
                    text: Symbols.glyph("checkmark")
                    font.family: Symbols.fontFamily
                    font.pixelSize: 22
                    color: NamedColors.color("tabBarIconColorForSelected", page.dark)
                }
                onClicked: {
                    Haptics.impact()
                    actions.chooseColorScheme(modelData.scheme)
                }
            }
        }
    }
}
