import QtQuick
import QtQuick.Templates as T

// The face of a button without a frame. It is framed while the button is highlighted.
Rectangle {
    required property T.Button control

    radius: Look.controlRadius
    color: control.highlighted ? Look.onColor : control.hovered || control.down ? Look.buttonHoverColor : "transparent"
    border.width: control.highlighted ? 1 : 0
    border.color: Look.kestrinAccentBlue
}
