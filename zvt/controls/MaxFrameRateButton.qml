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
    background: FlatFace {
        control: button
    }
}
