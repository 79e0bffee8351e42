import QtQuick

// A row with a list to choose from.
SettingRow {
    id: row

    property alias model: box.model
    property alias currentIndex: box.currentIndex
    property alias displayText: box.displayText

    signal activated(index: int)

    Choice {
        id: box

        Accessible.name: row.name
        toolTip: row.toolTip
        onActivated: index => row.activated(index)
    }
}
