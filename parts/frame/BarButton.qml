import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt.look

// A button of the tool bar.
T.Button {
    id: button

    required property string glyph
    required property string toolTip

    // It reaches to the edge of the window.
    readonly property int ringOutset: -3

    implicitWidth: 42
    Layout.fillHeight: true
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: toolTip

    onHoveredChanged: Hint.show(button, hovered || visualFocus, toolTip)
    onVisualFocusChanged: Hint.show(button, hovered || visualFocus, toolTip)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: GlyphLabel {
        text: button.glyph
        font.pixelSize: 16
        color: Look.cameraBarForegroundColor
    }
    background: Rectangle {
        color: button.hovered || button.down ? Look.rowHoverColor : "transparent"
    }
}
