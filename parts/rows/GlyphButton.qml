import QtQuick
import zvt
import zvt.look

// A button that shows a glyph. Its tool tip is also its accessible name. `highlighted` shows that it is switched on.
WrappingButton {
    id: button

    required property string glyph

    implicitWidth: Look.rowHeight
    padding: 0
    leftPadding: 0
    rightPadding: 0
    textColor: highlighted && enabled ? Look.kestrinAccentBlue : Look.textColor

    contentItem: GlyphLabel {
        text: button.glyph
        color: button.textColor
    }
    background: FlatFace {
        control: button
    }
}
