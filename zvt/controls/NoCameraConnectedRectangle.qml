import QtQuick
import zvt.look

// The banner that a page shows while there is no camera.
Rectangle {
    implicitWidth: label.implicitWidth + 24
    implicitHeight: Look.rowHeight
    radius: Look.controlRadius
    color: Look.kestrinAccentOrange

    PlainLabel {
        id: label

        anchors.fill: parent
        //: Banner over a page while the camera is away
        text: qsTr("No camera connected")
        font.weight: Font.DemiBold
        fontSizeMode: width > 0 && implicitWidth > width ? Text.Fit : Text.FixedSize
        minimumPixelSize: 8
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: Look.inverseTextColor
    }
}
