import QtQuick
import QtQuick.Layouts
import zvt.look

// A group of rows that belong together and are shown or hidden together.
ColumnLayout {
    spacing: Look.rowSpacing
    Layout.fillWidth: true
}
