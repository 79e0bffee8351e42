import QtQuick
import zvt
import zvt.look

// A button with a glyph for a command of the recorder. Its tool tip is also its accessible name.
WrappingButton {
    id: button

    required property string glyph
    // The colour of the glyph while the button is enabled.
    property color tint: Look.textColor

    implicitWidth: 44
    // Also on platforms without hover effects, since the diagram shows the path of the hovered button.
    hoverEnabled: true

    contentItem: GlyphLabel {
        text: button.glyph
        font.pixelSize: 16
        color: button.enabled ? button.tint : Look.textColor
    }
}
