import QtQuick
import QtQuick.Templates as T

// The background of a button that has a frame only while it is highlighted.
Rectangle {
    required property T.Button control

    radius: Look.controlRadius
    color: control.highlighted ? Look.onColor : control.hovered || control.down ? Look.buttonHoverColor : "transparent"
    border.width: control.highlighted ? 1 : 0
    border.color: Look.kestrinAccentBlue
}
