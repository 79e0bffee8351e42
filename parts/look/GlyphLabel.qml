import QtQuick
import QtQuick.Templates as T

// A glyph of the host's icon font. The host sets the font as a context property; only this file reads it.
T.Label {
    Accessible.ignored: true
    font.family: fontAwesome.name
    textFormat: Text.PlainText
    color: Look.textColor
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
