pragma Singleton
import QtQuick

// Codes of the glyphs in the host's icon font, named by their meaning.
QtObject {
    readonly property string add: "\uf067"
    readonly property string apply: "\uf00c"
    readonly property string busy: "\uf013"
    readonly property string caretDown: "\uf0d7"
    readonly property string caretRight: "\uf0da"
    readonly property string circle: "\uf10c"
    readonly property string clock: "\uf017"
    readonly property string connect: "\uf1e6"
    readonly property string cross: "\uf00d"
    readonly property string disconnect: "\uf127"
    readonly property string eject: "\uf052"
    readonly property string exclamation: "\uf06a"
    readonly property string flipHorizontally: "\uf07e"
    readonly property string flipVertically: "\uf07d"
    readonly property string info: "\uf05a"
    readonly property string list: "\uf0ca"
    readonly property string load: "\uf07c"
    readonly property string lock: "\uf023"
    readonly property string menu: "\uf0c9"
    readonly property string pencil: "\uf040"
    readonly property string question: "\uf059"
    readonly property string refresh: "\uf021"
    readonly property string save: "\uf0c7"
    readonly property string snowflake: "\uf2dc"
    readonly property string spinner: "\uf110"
    readonly property string thermometer: "\uf2c9"
    readonly property string undo: "\uf0e2"
    readonly property string warning: "\uf071"
}
