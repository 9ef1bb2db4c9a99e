import QtQuick
import TideMark.Browsing

// One card of the stack across: the vertical card with the glass look by default.
VerticalStackCardUnitView {
    activateGlassMorphism: true
    defaultBlurRadius: 12
    defaultSaturationAmount: 1.6
}
