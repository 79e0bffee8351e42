import QtQuick
import zvt
import zvt.look

// A button that shows a colour of the overlay's palette. The section lets the operator pick another one and then emits
// `picked` on the button.
WrappingButton {
    id: button

    // What has the colour.
    required property string subject
    // The entry of the palette.
    required property int colorIndex
    // Its colour. Invalid if there is none.
    required property color swatch

    // The operator has picked an entry of the palette.
    signal picked(index: int)

    implicitWidth: 48
    leftPadding: 5
    rightPadding: 5
    topPadding: 5
    bottomPadding: 5
    //: Tool tip of a button; %1 is what has the colour
    toolTip: qsTr("Pick %1 Color").arg(subject)

    contentItem: Rectangle {
        color: button.swatch.valid ? button.swatch : Look.fieldColor
        border.color: Look.buttonFrameColor

        // Marks a missing colour.
        PlainLabel {
            anchors.fill: parent
            visible: !button.swatch.valid
            Accessible.ignored: true
            text: "–"
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
}
