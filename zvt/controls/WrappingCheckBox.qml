import QtQuick
import QtQuick.Templates as T
import zvt.look

// A check box whose text wraps instead of being cut off.
T.CheckBox {
    id: checkBox

    implicitWidth: implicitContentWidth
    implicitHeight: Math.max(Look.rowHeight, implicitContentHeight + topPadding + bottomPadding)
    spacing: 8
    topPadding: 4
    bottomPadding: 4
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: text

    indicator: Rectangle {
        y: (checkBox.height - height) / 2
        width: 16
        height: 16
        radius: 2
        color: checkBox.checked ? Look.onColor : Look.fieldColor
        border.color: checkBox.checked ? Look.kestrinAccentBlue : Look.fieldFrameColor

        GlyphLabel {
            anchors.centerIn: parent
            visible: checkBox.checked
            text: Glyph.apply
            color: Look.kestrinAccentBlue
        }
    }
    contentItem: PlainLabel {
        leftPadding: 16 + checkBox.spacing
        text: checkBox.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
    }
}
