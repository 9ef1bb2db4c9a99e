pragma Singleton
import QtQuick

// The named colours of events, in light and dark variants.
QtObject {
    readonly property var light: ({
        "colorForUserSelection01": "#E5534B", "colorForUserSelection02": "#F08C2E",
        "colorForUserSelection03": "#2F9E6E", "colorForUserSelection04": "#2F7FD8",
        "colorForUserSelection05": "#8A5CD0", "colorForUserSelection06": "#D6478F",
        "colorForUserSelection07": "#1FA3A8", "colorForUserSelection08": "#8C7A4E",
        "colorForUserSelection09": "#5A6B7D", "colorForUserSelection10": "#C9A227"
    })
    readonly property var dark: ({
        "colorForUserSelection01": "#FF6F66", "colorForUserSelection02": "#FFA24D",
        "colorForUserSelection03": "#4CC38A", "colorForUserSelection04": "#5AA2F5",
        "colorForUserSelection05": "#A882F0", "colorForUserSelection06": "#F06AAE",
        "colorForUserSelection07": "#3CC6CB", "colorForUserSelection08": "#B5A273",
        "colorForUserSelection09": "#8A9BAD", "colorForUserSelection10": "#E8C547"
    })
    readonly property color noColor: "#9E9E9E"

    function eventColor(name, darkScheme) {
        const table = darkScheme ? dark : light
        return table[name] !== undefined ? table[name] : noColor
    }
}
