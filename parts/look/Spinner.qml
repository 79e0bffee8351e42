import QtQuick

// Turns as long as it exists. Put it into a Loader that is active only during the operation: an invisible animation
// still wakes the process 60 times a second.
GlyphLabel {
    id: spinner

    property int size: 16

    width: size
    height: size
    text: Glyph.spinner
    font.pixelSize: size
    color: Look.kestrinAccentBlue

    RotationAnimation on rotation {
        from: 0
        to: 360
        duration: 1200
        loops: Animation.Infinite
    }
}
