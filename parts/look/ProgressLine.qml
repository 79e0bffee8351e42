import QtQuick
import QtQuick.Templates as T

// A progress bar.
T.ProgressBar {
    id: bar

    // Start and length of the filled part, from 0 to 1 of the width.
    property real fillStart: 0
    property real fillLength: visualPosition

    implicitWidth: 120
    implicitHeight: 8
    padding: 1

    contentItem: Item {
        Rectangle {
            x: bar.fillStart * parent.width
            width: bar.fillLength * parent.width
            height: parent.height
            radius: 2
            color: Look.kestrinAccentBlue
        }
    }
    background: Rectangle {
        radius: Look.controlRadius
        color: Look.fieldColor
        border.color: Look.fieldFrameColor
    }
}
