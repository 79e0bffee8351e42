import QtQuick
import QtQuick.Layouts
import zvt.look

// Two groups side by side from some width on, else below each other.
GridLayout {
    // The width from which on there is room for two.
    property int twoFrom: 1200

    columns: width >= twoFrom ? 2 : 1
    columnSpacing: 2 * Look.margin
    rowSpacing: Look.groupSpacing
    Layout.fillWidth: true
}
