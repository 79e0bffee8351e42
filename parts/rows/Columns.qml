import QtQuick
import QtQuick.Layouts
import zvt.look

// Two groups of rows: side by side if there is room for both, otherwise one below the other.
GridLayout {
    // The smallest width for two columns. The default is the width of a section's body in a window of 1240 pixels.
    property int twoColumnWidth: 1240 - 4 * Look.margin

    columns: width >= twoColumnWidth ? 2 : 1
    columnSpacing: 2 * Look.margin
    rowSpacing: Look.groupSpacing
    Layout.fillWidth: true
}
