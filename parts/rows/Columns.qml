import QtQuick
import QtQuick.Layouts
import zvt.look

// Two groups side by side from some width on, else below each other.
GridLayout {
    // The width from which on there is room for two: that of a section's body in a window of 1240 pixels.
    property int twoFrom: 1240 - 4 * Look.margin

    columns: width >= twoFrom ? 2 : 1
    columnSpacing: 2 * Look.margin
    rowSpacing: Look.groupSpacing
    Layout.fillWidth: true
}
