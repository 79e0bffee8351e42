import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look

// An action of the configuration menu.
WrappingButton {
    id: row

    property string glyph

    // The focus ring is inside, because a row fills the width of the menu.
    readonly property int ringOutset: -2

    // A text with the longest name of a state needs three lines in the smallest size.
    readonly property int _lines: Math.ceil(text.length / 80)

    implicitHeight: 32 * _lines
    leftPadding: 36
    rightPadding: 12
    clip: true
    Layout.fillWidth: true
    // The rows move together in a window that is too low for all of them.
    Layout.fillHeight: true
    Layout.minimumHeight: 24 * _lines
    Layout.maximumHeight: implicitHeight

    contentItem: PlainLabel {
        text: row.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        fontSizeMode: width > 0 && implicitWidth > width ? Text.Fit : Text.FixedSize
        minimumPixelSize: 8
    }
    background: Rectangle {
        color: row.down ? Look.buttonDownColor : row.hovered || row.visualFocus ? Look.rowHoverColor : "transparent"

        GlyphLabel {
            x: 12
            height: parent.height
            text: row.glyph
            color: Look.knobColor
        }
    }
}
