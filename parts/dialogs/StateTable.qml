import QtQuick
import QtQuick.Templates as T
import zvt.look

// The states that a camera keeps. One of them may be selected, by a click or by keys.
Rectangle {
    id: table

    required property var stateModel
    // The selection is a name, so that it stays when the list is read again. Empty for none.
    property string selected

    readonly property alias list: list
    readonly property bool _refreshing: stateModel ? stateModel.refreshing : false
    readonly property bool _read: stateModel ? stateModel.hasRefreshed && !_refreshing : false

    // A state was selected, or none, other than by setting the name.
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

    // How many rows a key moves the selection by. There may be a thousand of them.
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

        // The list is clipped, so the ring is inside.
        readonly property int ringOutset: -1

        anchors.fill: parent
        anchors.margins: 1
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        // The selection is the table's own.
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
        visible: table._read && list.count === 0
        //: In place of a list
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
