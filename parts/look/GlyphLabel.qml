import QtQuick
import QtQuick.Templates as T

// A glyph of the host's icon font. The font is known by a context name, so this is the one file that asks for it.
T.Label {
    Accessible.ignored: true
    font.family: fontAwesome.name
    textFormat: Text.PlainText
    color: Look.textColor
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
