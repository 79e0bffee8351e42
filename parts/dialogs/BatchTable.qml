import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// The list of the movies of a batch. Tab stops only at the controls of one row; the up, down, home, end and page keys
// move to other rows, except on a range, whose box takes all of them but the page keys. During a run, the list follows
// the movie that is being downloaded, and as no row can be used, Tab stops at the list, which the keys scroll.
FramedList {
    id: table

    required property BatchDownloadModel batch

    readonly property bool _downloading: batch ? batch.downloading : false
    // The row whose controls are in the tab chain. The list may have become shorter.
    readonly property int _row: Math.min(focusPlace.row, list.count - 1)

    // The last row was removed by its button.
    signal emptied

    function _rowItem(index: int): BatchRow {
        list.positionViewAtIndex(index, ListView.Contain)
        list.forceLayout()
        return list.itemAtIndex(index) as BatchRow
    }

    function _moveFocus(index: int, stop: int) {
        const item = _rowItem(index)
        if (item)
            item.focusStop(stop)
        else
            emptied()
    }

    function _step(rows: int) {
        if (_downloading) {
            const top = list.contentY + rows * columnPlaces.rowHeight
            list.contentY = Math.max(list.originY, Math.min(top, list.originY + list.contentHeight - list.height))
            return
        }
        const focused = list.itemAtIndex(_row) as BatchRow
        const stop = focused ? focused.focusedStop() : BatchRow.Output
        _moveFocus(Math.max(0, Math.min(_row + rows, list.count - 1)), stop)
    }

    function _follow(row: BatchRow) {
        if (row.activeFocus)
            focusPlace.row = row.index
    }

    // Not at once, since a row that leaves the view is removed while the view is laid out.
    function _remove(entry: BatchDownloadEntry, hadFocus: bool) {
        Qt.callLater(() => {
            if (batch)
                batch.remove(entry)
            // Until then, the view has the row.
            list.forceLayout()
            if (hadFocus)
                _moveFocus(_row, BatchRow.Remove)
        })
    }

    model: batch ? batch.entries : null
    //: A list
    name: qsTr("Output Files")
    wasRead: true
    //: Shown if the list is empty
    emptyText: qsTr("No output files.")
    list.activeFocusOnTab: _downloading
    onStepped: rows => _step(rows)

    header: BatchHeader {
        columns: columnPlaces
    }
    delegate: BatchRow {
        width: table.list.width
        batch: table.batch
        columns: columnPlaces
        // The index of a row changes before that of the focus.
        inTabChain: index === table._row || activeFocus
        onActiveFocusChanged: table._follow(this)
        onIndexChanged: table._follow(this)
        onRemoved: (entry, hadFocus) => table._remove(entry, hadFocus)
    }

    Connections {
        target: table.batch
        function onCurrentEntryChanged() {
            table.list.positionViewAtIndex(table.batch.currentEntryFileNumber - 1, ListView.Contain)
        }
    }

    BatchColumns {
        id: columnPlaces

        listWidth: table.list.width
    }

    QtObject {
        id: focusPlace

        property int row
    }
}
