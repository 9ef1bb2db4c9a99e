import QtQuick

// The colours of one scheme, light or dark; Theme.light and Theme.dark hold the values. A page
// takes the set of its scheme with Theme.colors(dark).
QtObject {
    property color pageBackground
    property color cardBackground
    property color cardBorder
    property color primaryText
    property color secondaryText
    property color symbolTint
    property color starSymbol
    property color chipBackground
    // The summary card's group boxes and the card stacks' edge and shadow.
    property color groupBoxBackground
    property color groupBoxSecBackground
    property color stackCardColorForStrokeBorder
    property color stackCardColorForShadow
    property color selectedCell
    // Text on an accent-filled cell, and the warning and error tints.
    property color selectedText
    property color warning
    property color error
    // The selected box of the summary card, dialogs, the switch's track and thumb, a scrim.
    property color summarySelected
    property color dialogBackground
    property color switchTrack
    property color switchThumb
    property color switchThumbBorder
    property color scrim
    // The named colours of this scheme ("colorForUserSelection01", "tabBarIconColorForSelected", ...).
    property var named
}
