import QtQuick
import QtQuick.Controls

// A row with a list of choices. `index` is bound to the model; chosen() reports the user's choice, and the list then
// shows `index` again. A change of `choices` would leave the first one selected: the list shows `index` again then too.
CardRow {
    id: row

    property alias choices: box.model
    property int index: -1

    signal chosen(index: int)

    function _showIndex() {
        box.currentIndex = Qt.binding(() => row.index)
    }

    ComboBox {
        id: box

        width: parent.width
        height: DeskLook.rowHeight
        font.pixelSize: DeskLook.textSize
        currentIndex: row.index
        onModelChanged: row._showIndex()
        onActivated: index => {
            row.chosen(index)
            row._showIndex()
        }

        Accessible.name: row.name
    }
}
