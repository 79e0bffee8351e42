import QtQuick
import zvt.look

// The banner that a page shows while no camera is connected.
Rectangle {
    implicitWidth: label.implicitWidth + 24
    implicitHeight: Look.rowHeight
    radius: Look.controlRadius
    color: Look.kestrinAccentOrange

    PlainLabel {
        id: label

        anchors.fill: parent
        //: Banner on a page while no camera is connected
        text: qsTr("No camera connected")
        font.weight: Font.DemiBold
        fontSizeMode: width > 0 && implicitWidth > width ? Text.Fit : Text.FixedSize
        minimumPixelSize: 8
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: Look.inverseTextColor
    }
}
