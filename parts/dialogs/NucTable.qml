import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// The list of the corrections (NUCs) in the camera. A click or a key selects one of them; the space bar asks for its
// description.
FramedList {
    id: table

    required property ZvtCameraModel camera
    // The selected row; -1 for none.
    property int currentIndex: -1
    // The name to select when the list has been read; empty for none.
    property string wantedName

    // The name in the selected row; empty if there is none.
    readonly property alias selected: state.selected
    readonly property bool _refreshing: camera ? camera.nucList.refreshing : true

    // The operator has selected a row.
    signal chosen
    signal infoRequested(row: int)

    // Selects the row with this name. Returns false, and selects no row, if there is none.
    function select(name: string): bool {
        let row = list.count - 1
        while (row >= 0 && camera.nucList.nameAt(row) !== name)
            --row
        currentIndex = row
        // The same row may have another name now.
        state.selected = row >= 0 ? name : ""
        list.positionViewAtIndex(row, ListView.Contain)
        return row >= 0
    }

    function _choose(row: int) {
        // While the list is read, it is empty.
        if (list.count === 0)
            return
        currentIndex = row
        list.positionViewAtIndex(row, ListView.Contain)
        if (selected !== "")
            chosen()
    }

    function _name(row: int): string {
        return camera ? camera.nucList.nameAt(row) : ""
    }

    model: camera ? camera.nucList : null
    //: A list
    name: qsTr("NUCs")
    busy: camera ? _refreshing : false
    spinnerName: "nucListBusy"
    wasRead: !_refreshing
    //: Shown if the list is empty
    emptyText: qsTr("The camera holds no NUCs.")
    onCurrentIndexChanged: state.selected = _name(currentIndex)
    onStepped: rows => _choose(Math.max(0, Math.min(currentIndex + rows, list.count - 1)))
    on_RefreshingChanged: {
        if (_refreshing) {
            wantedName = selected
            currentIndex = -1
        } else if (wantedName !== "") {
            select(wantedName)
            wantedName = ""
        }
    }
    Keys.onSpacePressed: infoRequested(currentIndex)

    header: NucHeader {}
    delegate: NucRow {
        width: table.list.width
        camera: table.camera
        highlighted: table.currentIndex === index
        onClicked: {
            table.list.forceActiveFocus(Qt.MouseFocusReason)
            table._choose(index)
        }
        onDoubleClicked: table.confirmed()
        onInfoRequested: table.infoRequested(index)
    }

    QtObject {
        id: state

        property string selected
    }
}
