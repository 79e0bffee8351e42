import QtQuick
import QtQuick.Layouts
import zvt.look

// Rows that belong together, and show together.
ColumnLayout {
    spacing: Look.rowSpacing
    Layout.fillWidth: true
}
