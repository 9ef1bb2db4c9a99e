pragma Singleton
import QtQuick

// The app's one theme: the colours of the light and the dark scheme, spacing, radii and type
// sizes. Pages take every colour from it (no colour literal in a page), and the shared
// components their sizes:
//     readonly property ThemeColors tone: Theme.colors(page.dark)
//     color: tone.pageBackground; anchors.margins: Theme.spacing
// Theme.named(name, dark) gives a named colour: the event colours a user picks
// ("colorForUserSelection01" to "05"; 06 to 10 exist but aren't offered) and the colours of the
// screens; "default" is the gray of an event without a colour, and an unknown name gives it too.
QtObject {
    // Spacing, radii and type sizes (pixels).
    readonly property int spacingSmall: 4
    readonly property int spacing: 8
    readonly property int spacingMedium: 12
    readonly property int spacingLarge: 16
    readonly property int spacingPage: 20
    readonly property int radiusSmall: 8
    readonly property int radius: 12
    readonly property int radiusCard: 14
    readonly property int radiusLarge: 16
    readonly property int fontCaption: 12
    readonly property int fontSmall: 13
    readonly property int fontSubhead: 14
    readonly property int fontBody: 15
    readonly property int fontBodyLarge: 16
    readonly property int fontTitle: 17
    readonly property int fontEmphasis: 18
    readonly property int fontHeader: 20
    readonly property int fontHeadline: 22
    readonly property int fontLargeTitle: 28
    readonly property int rowHeight: 52

    readonly property ThemeColors light: ThemeColors {
        pageBackground: "#F2F4F7"
        cardBackground: "#FFFFFF"
        cardBorder: "#E3E7EC"
        primaryText: "#1C2430"
        secondaryText: "#5F6B76"
        symbolTint: "#4F7886"
        starSymbol: "#E0A800"
        chipBackground: "#EAF1F4"
        groupBoxBackground: "#FFFFFF"
        groupBoxSecBackground: "#F0F4F7"
        stackCardColorForStrokeBorder: "#DCE3E9"
        stackCardColorForShadow: "#22000000"
        selectedCell: "cyan"
        selectedText: "#FFFFFF"
        warning: "#C7661A"
        error: "#C62828"
        summarySelected: "#17535C"
        dialogBackground: "#FFFFFF"
        switchTrack: "#D5D9DE"
        switchThumb: "#FFFFFF"
        switchThumbBorder: "#1F000000"
        scrim: "#80FFFFFF"
        named: ({
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
    }
    readonly property ThemeColors dark: ThemeColors {
        pageBackground: "#101418"
        cardBackground: "#1C2228"
        cardBorder: "#2A323A"
        primaryText: "#E8EDF1"
        secondaryText: "#9AA7B2"
        symbolTint: "#8FB8C8"
        starSymbol: "#F2C94C"
        chipBackground: "#26303A"
        groupBoxBackground: "#1C2228"
        groupBoxSecBackground: "#242C34"
        stackCardColorForStrokeBorder: "#34404A"
        stackCardColorForShadow: "#66000000"
        selectedCell: "cyan"
        selectedText: "#0B1A1E"
        warning: "#FFB454"
        error: "#FF8A80"
        summarySelected: Qt.rgba(0, 1, 1, 0.16)
        dialogBackground: "#2A3036"
        switchTrack: "#3A4148"
        switchThumb: "#FFFFFF"
        switchThumbBorder: "transparent"
        scrim: "#80000000"
        named: ({
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
    }

    function colors(isDark: bool): ThemeColors {
        return isDark ? dark : light
    }

    function named(name: string, isDark: bool): color {
        const table = isDark ? dark.named : light.named
        return table[name] !== undefined ? table[name] : table["default"]
    }
}
