import QtQuick

// Turns for as long as it exists. It belongs into a Loader that is active only while something is busy, since an
// invisible animation wakes the process sixty times a second.
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
