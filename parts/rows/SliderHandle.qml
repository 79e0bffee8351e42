import QtQuick
import zvt.look

// The handle of a slider.
Rectangle {
    width: 16
    height: 16
    radius: 8
    color: Look.textColor
    border.width: 2
    border.color: Look.backColor
}
