pragma Singleton
import QtQuick

// The app's named colours, in light and dark variants: the event colours a user picks
// ("colorForUserSelection01" to "05"; 06 to 10 exist but aren't offered) and the colours of the
// screens. "default" is the gray of an event without a colour. An unknown name gives that gray.
QtObject {
    readonly property var light: ({
        "colorForUserSelection01": "#E5534B", "colorForUserSelection02": "#F08C2E",
        "colorForUserSelection03": "#2F9E6E", "colorForUserSelection04": "#2F7FD8",
        "colorForUserSelection05": "#8A5CD0", "colorForUserSelection06": "#D6478F",
        "colorForUserSelection07": "#1FA3A8", "colorForUserSelection08": "#8C7A4E",
        "colorForUserSelection09": "#5A6B7D", "colorForUserSelection10": "#C9A227",
        "default": "#8E8E93",
        "tabBarIconColorForSelected": "#1F7A8C", "tabBarIconColorForNotSelected": "#9AA5AD",
        "tabBarIconColorForPlusButton": "#E5534B",
        "selectedDateBackground": "#1F7A8C", "selectedDateTextFroeground": "#FFFFFF",
        "verStackCardsForegroundColorTry": "#1C2430", "verStackCardsBackgroundNewTry": "#F1F4F6",
        "ThemeBG": "#F7F8FA", "Sun": "#F5B83D", "Moon": "#5B6B9A"
    })
    readonly property var dark: ({
        "colorForUserSelection01": "#FF6F66", "colorForUserSelection02": "#FFA24D",
        "colorForUserSelection03": "#4CC38A", "colorForUserSelection04": "#5AA2F5",
        "colorForUserSelection05": "#A882F0", "colorForUserSelection06": "#F06AAE",
        "colorForUserSelection07": "#3CC6CB", "colorForUserSelection08": "#B5A273",
        "colorForUserSelection09": "#8A9BAD", "colorForUserSelection10": "#E8C547",
        "default": "#8E8E93",
        "tabBarIconColorForSelected": "#5CC8DA", "tabBarIconColorForNotSelected": "#6B7780",
        "tabBarIconColorForPlusButton": "#FF6F66",
        "selectedDateBackground": "#5CC8DA", "selectedDateTextFroeground": "#0B1A1E",
        "verStackCardsForegroundColorTry": "#E8EDF1", "verStackCardsBackgroundNewTry": "#1E252C",
        "ThemeBG": "#161B20", "Sun": "#F7C45E", "Moon": "#9AA9D8"
    })

    function color(name, darkScheme) {
        const table = darkScheme ? dark : light
        return table[name] !== undefined ? table[name] : table["default"]
    }
}
