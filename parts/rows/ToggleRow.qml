import QtQuick

// A row with a switch, which has its text at its right.
SettingRow {
    id: row

    property alias text: toggle.text
    property alias checked: toggle.checked

    signal toggled

    Toggle {
        id: toggle

        toolTip: row.toolTip
        onToggled: row.toggled()
    }
}
