import QtQuick
import QtQuick.Layouts
import zvt.look

// A text in a FilterRow.
PlainLabel {
    // Whether the filter of the row is in use.
    required property bool selected

    Layout.minimumHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity
    color: selected ? Look.strongTextColor : Look.textColor
    font.weight: selected ? Font.DemiBold : Font.Normal
    verticalAlignment: Text.AlignVCenter
}
