import QtQuick
import QtQuick.Layouts
import zvt.look

// A row with a text that the operator cannot change.
SettingRow {
    id: row

    property string value

    PlainLabel {
        Layout.minimumHeight: Look.rowHeight
        opacity: enabled ? 1 : Look.disabledOpacity
        text: row.value
        verticalAlignment: Text.AlignVCenter

        Accessible.name: row.name
        Accessible.description: row.value
    }
}
