pragma Singleton
import QtQuick

// The symbols the screens name ("star.fill", "bell.badge", ...) as glyphs of the Material Icons
// font (Debian's fonts-material-design-icons-iconfont). Show one with
//     Text { font.family: Symbols.fontFamily; text: Symbols.glyph("star.fill") }
// An unknown name gives "" (nothing drawn), never a wrong picture.
QtObject {
    readonly property string fontFamily: "Material Icons"
    readonly property var glyphs: ({
        "star.fill": "\ue838",
        "bell.badge": "\ue7f7",
        "bell.slash": "\ue7f6",
        "repeat": "\ue040",
        "shareplay": "\ue0e2",
        "calendar": "\ue935",
        "calendar.badge.clock": "\ueb7b",
        "rectangle.stack": "\ue8e9",
        "rectangle.3.group": "\ue871",
        "plus": "\ue145",
        "arrowtriangle.backward": "\ue5de",
        "arrowtriangle.forward": "\ue5df",
        "chevron.left": "\ue5cb",
        "chevron.right": "\ue5cc",
        "chevron.down": "\ue5cf",
        "chevron.up": "\ue5ce",
        "list.clipboard": "\ue85d",
        "square.and.pencil": "\ue745",
        "square.and.arrow.up": "\ue6b8",
        "square.and.arrow.down": "\ue2c4",
        "doc.on.doc": "\ue14d",
        "square.stack.3d.up": "\ue53b",
        "calendar.day.timeline.left": "\ue8df",
        "rectangle.split.3x1": "\ue8f4",
        "checkmark": "\ue5ca",
        "eraser.line.dashed.fill": "\ue23b",
        "sun.min": "\ue1ad",
        "moon.zzz": "\uef44",
        "light.max": "\ue518",
        "keyboard.badge.ellipsis": "\ue312",
        "keyboard.chevron.compact.down": "\ue31a",
        "delete.left": "\ue14a",
        "trash": "\ue872",
        "line.3.horizontal.decrease.circle": "\ue152",
        "ellipsis": "\ue5d3",
        "gearshape": "\ue8b8",
        "forward.end": "\ue044",
        "exclamationmark.circle": "\ue001",
        "arrow.uturn.backward": "\ue166",
        "clock": "\ue8b5",
        "eraser.line.dashed": "\ue3c9",
        "star.slash.fill": "\ue83a",
        "xmark": "\ue5cd",
        "arrow.down.to.line": "\ue258",
        "arrow.up.to.line": "\ue25a",
        "photo.stack": "\ue413",
        "icloud": "\ue2bd",
        "envelope": "\ue158",
        "info.circle": "\ue88e",
        "questionmark.circle": "\ue8fd",
        "heart": "\ue87d",
        "link": "\ue89e",
        "person.2": "\ue7ef",
        "timeline.selection": "\ue922",
        // The app lock's symbol: a fingerprint, the way an owner is usually confirmed here.
        "faceid": "\ue90d",
        "lock": "\ue897"
    })

    function glyph(name) {
        return glyphs[name] !== undefined ? glyphs[name] : ""
    }
}
