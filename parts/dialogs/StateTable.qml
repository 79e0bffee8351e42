import QtQuick
import QtQuick.Templates as T
import zvt.look

// The list of states saved in the camera. A click or a key selects one of them.
Rectangle {
    id: table

    required property var stateModel
    // The name of the selected state; empty for none. A name instead of a row, so that it remains valid when the list
    // is read again.
    property string selected

    readonly property alias list: list
    readonly property bool _refreshing: stateModel ? stateModel.refreshing : false
    readonly property bool _hasRead: stateModel ? stateModel.hasRefreshed && !_refreshing : false

    // The selection was changed by select() or selectRow(), not by setting `selected`.
    signal chosen
    // Enter was pressed.
    signal confirmed

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

    // By how many rows a key moves the selection; 0 for other keys.
    function _rowsOf(key: int): int {
        const page = Math.max(1, Math.floor(list.height / Look.rowHeight))
        switch (key) {
        case Qt.Key_Up:
            return -1
        case Qt.Key_Down:
            return 1
        case Qt.Key_PageUp:
            return -page
        case Qt.Key_PageDown:
            return page
        case Qt.Key_Home:
            return -list.count
        case Qt.Key_End:
            return list.count
        default:
            return 0
        }
    }

    implicitHeight: 240
    radius: Look.controlRadius
    color: Look.fieldColor
    border.color: Look.fieldFrameColor

    Connections {
        target: table.stateModel
        function onRefreshingChanged() {
            if (!table._refreshing && table.selected !== "" && table._selectedRow() < 0)
                table.select("")
        }
    }

    ListView {
        id: list

        // The focus ring is inside, because the list clips its contents.
        readonly property int ringOutset: -1

        anchors.fill: parent
        anchors.margins: 1
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        // Not used: `selected` is the selection.
        currentIndex: -1
        model: table.stateModel ? table.stateModel.entries : null

        //: A list
        Accessible.name: qsTr("States")
        Accessible.role: Accessible.List
        Keys.onReturnPressed: table.confirmed()
        Keys.onEnterPressed: table.confirmed()
        Keys.onPressed: event => {
            const rows = table._rowsOf(event.key)
            event.accepted = rows !== 0
            if (event.accepted)
                table.selectRow(Math.max(0, Math.min(table._selectedRow() + rows, count - 1)))
        }

        T.ScrollBar.vertical: SlimScrollBar {}

        delegate: StateRow {
            width: list.width
            highlighted: name !== "" && name === table.selected
            onClicked: {
                table.select(name)
                list.forceActiveFocus(Qt.MouseFocusReason)
            }
        }
    }

    PlainLabel {
        anchors.fill: parent
        anchors.margins: 12
        visible: table._hasRead && list.count === 0
        //: Shown if the list is empty
        text: qsTr("The camera holds no states.")
        color: Look.dimTextColor
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }

    Loader {
        anchors.centerIn: parent
        active: table._refreshing && table.visible
        sourceComponent: Spinner {
            objectName: "stateListBusy"
        }
    }
}
