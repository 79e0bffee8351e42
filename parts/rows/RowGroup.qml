import QtQuick
import QtQuick.Layouts
import zvt.look

// Rows that belong together, and are shown together.
ColumnLayout {
    spacing: Look.rowSpacing
    Layout.fillWidth: true
}
