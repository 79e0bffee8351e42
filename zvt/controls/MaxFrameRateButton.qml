import QtQuick
import zvt.look

// Sets the highest frame rate. `highlighted` shows that it is already in use.
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
