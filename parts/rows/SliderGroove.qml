import QtQuick
import zvt.look

// The groove of a slider.
Rectangle {
    height: 4
    radius: 2
    color: Look.buttonFrameColor
}
