import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look

// A button of the tool bar. Its tool tip is also its accessible name.
WrappingButton {
    id: button

    required property string glyph

    // The focus ring is inside, because the button touches the edge of the window.
    readonly property int ringOutset: -3

    implicitWidth: 42
    Layout.fillHeight: true

    contentItem: GlyphLabel {
        text: button.glyph
        font.pixelSize: 16
        color: Look.cameraBarForegroundColor
    }
    background: Rectangle {
        color: button.hovered || button.down ? Look.rowHoverColor : "transparent"
    }
}
