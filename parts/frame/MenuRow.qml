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

    // Room for a text with the longest name of a state, which needs three lines in the smallest size.
    implicitHeight: 32 * Math.ceil(text.length / 80)
    leftPadding: 36
    rightPadding: 12
    clip: true
    Layout.fillWidth: true

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
