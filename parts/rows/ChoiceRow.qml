import QtQuick

// A row with a combo box.
SettingRow {
    id: row

    property alias model: box.model
    property alias currentIndex: box.currentIndex
    property alias displayText: box.displayText
    readonly property alias listOpen: box.listOpen

    signal activated(index: int)

    Choice {
        id: box

        Accessible.name: row.name
        toolTip: row.toolTip
        onActivated: index => row.activated(index)
    }
}
