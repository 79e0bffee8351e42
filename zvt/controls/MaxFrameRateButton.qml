import QtQuick
import zvt.look

// Asks for the highest frame rate; highlighted while that is the one in use.
WrappingButton {
    id: button

    implicitWidth: Look.rowHeight
    padding: 0
    leftPadding: 0
    rightPadding: 0
    textColor: highlighted && enabled ? Look.kestrinAccentBlue : Look.textColor
    //: Tool tip
    toolTip: qsTr("Set to Maximum Frame Rate")

    contentItem: MaxFrameRateIcon {
        color: button.textColor
    }
    background: Rectangle {
        radius: Look.controlRadius
        color: button.highlighted ? Look.onColor : button.hovered || button.down ? Look.buttonHoverColor : "transparent"
        border.width: button.highlighted ? 1 : 0
        border.color: Look.kestrinAccentBlue
    }
}
