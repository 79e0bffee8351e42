import QtQuick
import QtQuick.Layouts
import zvt.rows

// A slot of the filter wheel: the filter in it, by number and by name, and the button that turns the wheel to it.
FilterRow {
    id: row

    // A FilterWheelItemModel.
    required property var item
    // The names of all filters, by their numbers.
    required property var names

    readonly property int _id: item ? item.filterID : -1
    readonly property string _slot: item ? item.slotID : ""

    // The operator has changed the number of the filter.
    signal edited

    function _setId(id: int) {
        item.filterID = id
        edited()
    }

    component Cell: FilterCell {
        selected: row.selected
    }

    Cell {
        Layout.preferredWidth: 32
        text: row._slot
        horizontalAlignment: Text.AlignRight
    }

    NumberBox {
        Layout.preferredWidth: 60
        name: "Filter ID of Slot " + row._slot
        to: 63
        modelText: row._id < 0 ? "" : row._id
        onTyped: id => row._setId(id)
    }

    Choice {
        Layout.fillWidth: true
        Accessible.name: "Filter Name of Slot " + row._slot
        model: row.names
        // Depends on `model`, since a new list selects its first row.
        currentIndex: model ? row._id : -1
        onActivated: index => row._setId(index)
    }

    WheelAction {
        implicitWidth: 88
        text: "Select"
        subject: "Slot " + row._slot
        shows: !row.selected
        moving: row.moving
        busy: row.selected && row.moving
        onClicked: row.selectRequested()

        Cell {
            anchors.fill: parent
            visible: row.selected && !row.moving
            text: "Selected"
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
