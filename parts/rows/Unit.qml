import QtQuick
import zvt.look

// The unit after a value.
PlainLabel {
    Accessible.ignored: true
    color: Look.dimTextColor
    font.pixelSize: Look.hintSize
}
