import QtQuick
import QtQuick.Controls

// A row with a switch. `value` is bound to the model; toggled() reports the user's choice, and the switch then shows
// `value` again.
CardRow {
    id: row

    property bool value: false

    signal toggled(value: bool)

    function _showValue() {
        box.checked = Qt.binding(() => row.value)
    }

    Switch {
        id: box

        height: DeskLook.rowHeight
        checked: row.value
        onToggled: {
            row.toggled(checked)
            row._showValue()
        }

        Accessible.name: row.name
    }
}
