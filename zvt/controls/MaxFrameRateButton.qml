import QtQuick

// Asks for the highest frame rate; highlighted while that is the one in use.
WrappingButton {
    id: button

    implicitWidth: 30
    padding: 0
    leftPadding: 0
    rightPadding: 0
    flat: true
    //: Tool tip
    toolTip: qsTr("Set to Maximum Frame Rate")

    contentItem: MaxFrameRateIcon {
        color: button.highlighted ? root.kestrinAccentBlue : root.textColor
        opacity: button.enabled ? 1 : 0.5
    }
    background: Rectangle {
        radius: 3
        color: button.hovered || button.down ? root.hoverColor : "transparent"
        border.width: button.highlighted || button.visualFocus ? 1 : 0
        border.color: root.kestrinAccentBlue
    }
}
