import QtQuick

// The colours of the rule pages: the browsing screens' palette plus the text on a selected cell
// and the warning tint.
BrowsingColors {
    readonly property color selectedText: dark ? "#0B1A1E" : "#FFFFFF"
    readonly property color warning: dark ? "#FFB454" : "#C7661A"
}
