import QtQuick
import zvt.look

// The icon of the highest frame rate.
PlainLabel {
    Accessible.ignored: true
    text: Look.maximumIcon
    font.family: Look.materialIconFamily
    font.pixelSize: Look.materialIconSize
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
