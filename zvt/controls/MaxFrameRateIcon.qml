import QtQuick
import QtQuick.Controls

// The sign of the highest frame rate.
Label {
    Accessible.ignored: true
    text: "\ue9e4"
    font.family: root.materialIconFamily
    font.pixelSize: 18
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
