import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// A filter of the filter wheel, with the buttons that turn the wheel to it. The buttons are disabled while the wheel
// turns.
FilterRow {
    id: row

    // A FilterWheelItemModel.
    required property var item
    // Whether the wheel turns to the selected filter: to use it, or to replace it.
    required property bool selecting
    required property bool replacing
    required property bool replaceable
    required property int actionWidth

    readonly property string filterName: item ? item.filterName : ""

    signal replaceRequested

    component Cell: FilterCell {
        selected: row.selected
    }

    component Action: WheelAction {
        implicitWidth: row.actionWidth
        subject: row.filterName
        moving: row.moving
    }

    moving: selecting || replacing

    Cell {
        id: nameCell

        Layout.fillWidth: true
        text: row.filterName
        elide: Text.ElideRight

        HoverHandler {
            onHoveredChanged: Hint.show(nameCell, hovered && nameCell.truncated, row.filterName)
        }
    }

    Cell {
        Layout.preferredWidth: 28
        text: row.item ? row.item.filterID : ""
        horizontalAlignment: Text.AlignRight
    }

    Action {
        //: Turns the filter wheel to this filter
        text: qsTr("Select")
        shows: !row.selected
        busy: row.selected && row.selecting
        onClicked: row.selectRequested()

        Cell {
            anchors.fill: parent
            visible: row.selected && !row.selecting
            //: In place of a button: this filter is in use
            text: qsTr("Selected")
            horizontalAlignment: Text.AlignHCenter
        }
    }

    Action {
        visible: row.replaceable
        //: Turns the filter wheel, so that the operator can put another filter in its place
        text: qsTr("Replace")
        shows: !busy
        busy: row.selected && row.replacing
        onClicked: row.replaceRequested()
    }
}
