import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look

// Covers the tool bar while the images come from a recording.
Rectangle {
    id: banner

    // The operator wants live images again.
    signal stopRequested

    color: Look.playbackColor

    // Keeps mouse events from the tool bar below.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 8
        spacing: 12

        PlainLabel {
            Layout.fillWidth: true
            //: The images come from a recording and not from the detector
            text: qsTr("Playing back from SSD/Memory.")
            font.weight: Font.DemiBold
            color: Look.inverseTextColor
            wrapMode: Text.Wrap
        }

        WrappingButton {
            //: Ends the playback
            text: qsTr("Back to live")
            onClicked: banner.stopRequested()
        }
    }
}
