import QtQuick
import QtQuick.Layouts
import zvt.look

// A row for a filter of the filter wheel. It begins with the mark of the filter in use, before the cells of its users.
RowLayout {
    id: row

    // Whether this filter is in the optical path, or the wheel turns to it.
    required property bool selected
    // Whether the wheel turns to the selected filter.
    property bool moving

    signal selectRequested

    spacing: 12
    Layout.fillWidth: true

    GlyphLabel {
        objectName: "filterMark"
        Layout.preferredWidth: 12
        opacity: row.selected ? (enabled ? 1 : Look.disabledOpacity) : 0
        text: Glyph.caretRight
        color: row.moving ? Look.movingColor : Look.kestrinAccentBlue
    }
}
