import QtQuick
import QtQuick.Layouts
import zvt.look

// The title of a column of numbers.
PlainLabel {
    Layout.preferredWidth: Look.numberColumnWidth
    rightPadding: 8
    opacity: enabled ? 1 : Look.disabledOpacity
    color: Look.headerTextColor
    horizontalAlignment: Text.AlignRight
}
