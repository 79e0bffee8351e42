import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The list of the movies on the drive of the camera. Clicks and keys mark movies as selected, if the camera can load
// movies. A plain click selects a row alone. If several may be selected, a Ctrl click toggles a row, a Shift click
// selects the rows from the last selected one, and a click with both keys extends the selection to the row. The arrow
// keys select a row alone. If several may be selected, they extend the selection with Shift and only move the cursor
// with Ctrl, and the space bar toggles the row of the cursor.
FramedList {
    id: table

    required property SsdTabModel ssdTabModel
    required property bool selectMultiple

    // The row of the last click, or of the last key that changed the selection; -1 for none.
    property int lastSelected: -1
    property int numSelected
    // The row from which the keys move on; -1 for none.
    property int _cursor: -1

    readonly property bool selectable: ssdTabModel ? ssdTabModel.recordModeAvailable : false
    readonly property bool _loading: ssdTabModel ? ssdTabModel.fileListLoading : false

    function clearSelection() {
        _selectOnly(-1)
        _forgetSelection()
    }

    function selectedMovies(): var {
        return _movies().filter(movie => movie.selected)
    }

    function _forgetSelection() {
        lastSelected = -1
        numSelected = 0
        _cursor = -1
    }

    function _movies(): var {
        const movies = []
        const rows = ssdTabModel ? ssdTabModel.fileListModel.size : 0
        for (let row = 0; row < rows; ++row)
            movies.push(ssdTabModel.fileListModel.at(row))
        return movies
    }

    function _selectOnly(wanted: int) {
        _movies().forEach((movie, row) => movie.selected = row === wanted)
    }

    function _selectBetween(first: int, second: int) {
        const start = Math.min(first, second)
        _movies().slice(start, Math.max(first, second) + 1).forEach(movie => movie.selected = true)
    }

    // Adds the rows from the bottom one of the selection if the row is below it, otherwise from the top one.
    function _extendTo(row: int) {
        const movies = _movies()
        const top = movies.findIndex(movie => movie.selected)
        let bottom = movies.length - 1
        while (bottom >= 0 && !movies[bottom].selected)
            --bottom
        _selectBetween(top < 0 ? row : row > bottom ? bottom : top, row)
    }

    function _toggle(row: int) {
        const movie = ssdTabModel.fileListModel.at(row) as SsdMovieFileInfoModel
        movie.selected = !movie.selected
    }

    function _finish(row: int) {
        lastSelected = row
        numSelected = selectedMovies().length
        _cursor = row
    }

    function _pick(row: int, control: bool, shift: bool) {
        if (!selectMultiple || !(control || shift))
            _selectOnly(row)
        else if (control && shift)
            _extendTo(row)
        else if (control)
            _toggle(row)
        else if (lastSelected >= 0)
            _selectBetween(lastSelected, row)
        _finish(row)
    }

    function _pickByKey(rows: int, modifiers: int) {
        if (!selectable) {
            const lowest = list.contentHeight - list.height
            list.contentY = Math.max(0, Math.min(list.contentY + rows * Look.rowHeight, lowest))
            return
        }
        if (list.count === 0)
            return
        const row = Math.max(0, Math.min(_cursor + rows, list.count - 1))
        const control = (modifiers & Qt.ControlModifier) !== 0
        const shift = (modifiers & Qt.ShiftModifier) !== 0
        if (selectMultiple && control)
            _cursor = row
        else
            _pick(row, shift, shift)
        list.positionViewAtIndex(row, ListView.Contain)
    }

    model: ssdTabModel && !_loading ? ssdTabModel.fileListModel : null
    //: A list
    name: qsTr("Movies")
    busy: _loading
    spinnerName: "movieListBusy"
    wasRead: !_loading
    //: Shown if the list is empty
    emptyText: qsTr("The drive holds no movies.")
    onStepped: (rows, modifiers) => _pickByKey(rows, modifiers)
    Keys.onSpacePressed: {
        if (selectable && _cursor >= 0)
            _pick(_cursor, true, false)
    }

    header: Rectangle {
        implicitHeight: Look.rowHeight
        color: Look.panelColor

        MovieCells {
            anchors.fill: parent
            anchors.leftMargin: 10
            anchors.rightMargin: 18
            //: Heading of a column: the number of a movie
            number: qsTr("#")
            //: Heading of a column: the name of a movie
            name: qsTr("Filename")
            //: Heading of a column: how many frames a movie has
            frames: qsTr("Frames")
            //: Heading of a column: width and height of the image
            size: qsTr("Size")
            //: Heading of a column: the time of the first frame; IRIG is a time code
            startTime: qsTr("IRIG Start Time")
            //: Heading of a column: the time of the last frame; IRIG is a time code
            endTime: qsTr("IRIG End Time")
            color: Look.headerTextColor
            weight: Font.DemiBold
        }
    }
    delegate: MovieRow {
        width: table.list.width
        selectable: table.selectable
        hasCursor: table.selectMultiple && table._cursor === index && table.list.activeFocus
        onPicked: (control, shift) => {
            table.list.forceActiveFocus(Qt.MouseFocusReason)
            table._pick(index, control, shift)
        }
        onDoublePicked: {
            table._pick(index, false, false)
            table.confirmed()
        }
    }

    // The rows of a new list are not selected.
    Connections {
        target: table.ssdTabModel
        function onFileListModelChanged() {
            table._forgetSelection()
        }
    }
}
