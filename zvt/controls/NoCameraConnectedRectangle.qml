import QtQuick
import QtQuick.Controls

// The banner that a page shows while there is no camera.
Rectangle {
    implicitWidth: label.implicitWidth + 24
    implicitHeight: root.rowHeight
    radius: 3
    color: root.kestrinAccentOrange

    Label {
        id: label

        anchors.fill: parent
        //: Banner over a page while the camera is away
        text: qsTr("No camera connected")
        font.weight: Font.DemiBold
        fontSizeMode: Text.Fit
        minimumPixelSize: 8
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: "black"
    }
}
