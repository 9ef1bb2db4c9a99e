import QtQuick

// The colours of the browsing screens that the shared named colours don't have (card surface,
// page background, secondary text, the star's gold), in light and dark. Make one per screen and
// bind `dark` to the window's Material theme.
QtObject {
    property bool dark: false

    readonly property color pageBackground: dark ? "#101418" : "#F2F4F7"
    readonly property color cardBackground: dark ? "#1C2228" : "#FFFFFF"
    readonly property color cardBorder: dark ? "#2A323A" : "#E3E7EC"
    readonly property color primaryText: dark ? "#E8EDF1" : "#1C2430"
    readonly property color secondaryText: dark ? "#9AA7B2" : "#5F6B76"
    readonly property color symbolTint: dark ? "#8FB8C8" : "#4F7886"
    readonly property color starSymbol: dark ? "#F2C94C" : "#E0A800"
    readonly property color chipBackground: dark ? "#26303A" : "#EAF1F4"
    // The summary card's group boxes and its edge.
    readonly property color groupBoxBackground: dark ? "#1C2228" : "#FFFFFF"
    readonly property color groupBoxSecBackground: dark ? "#242C34" : "#F0F4F7"
    readonly property color stackCardColorForStrokeBorder: dark ? "#34404A" : "#DCE3E9"
    readonly property color stackCardColorForShadow: dark ? "#66000000" : "#22000000"
    readonly property color selectedCell: "cyan"
}
