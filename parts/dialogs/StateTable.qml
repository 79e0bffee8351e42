import QtQuick

// The list of states saved in the camera. A click or a key selects one of them.
FramedList {
    id: table

    required property var stateModel
    // The name of the selected state; empty for none. A name instead of a row, so that it remains valid when the list
    // is read again.
    property string selected

    readonly property bool _refreshing: stateModel ? stateModel.refreshing : false

    // The selection was changed by select() or selectRow(), not by setting `selected`.
    signal chosen

    function select(name: string) {
        selected = name
        chosen()
    }

    function selectRow(row: int) {
        const entry = stateModel.entries.at(row)
        select(entry ? entry.name : "")
        list.positionViewAtIndex(row, ListView.Contain)
    }

    function _selectedRow(): int {
        let row = stateModel.entries.size - 1
        while (row >= 0 && stateModel.entries.at(row).name !== selected)
            --row
        return row
    }

    model: stateModel ? stateModel.entries : null
    //: A list
    name: qsTr("States")
    busy: _refreshing
    spinnerName: "stateListBusy"
    wasRead: stateModel ? stateModel.hasRefreshed && !_refreshing : false
    //: Shown if the list is empty
    emptyText: qsTr("The camera holds no states.")
    onStepped: rows => selectRow(Math.max(0, Math.min(_selectedRow() + rows, list.count - 1)))

    delegate: StateRow {
        width: table.list.width
        highlighted: name !== "" && name === table.selected
        onClicked: {
            table.select(name)
            table.list.forceActiveFocus(Qt.MouseFocusReason)
        }
    }

    Connections {
        target: table.stateModel
        function onRefreshingChanged() {
            if (!table._refreshing && table.selected !== "" && table._selectedRow() < 0)
                table.select("")
        }
    }
}
