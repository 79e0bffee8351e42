import QtQuick
import QtQuick.Controls

// A call in two lines: its time, name and status, and below them its thread, arguments and duration.
Item {
    id: row

    property string time: ""
    property string thread: ""
    property string name: ""
    property string inputs: ""
    property string status: ""
    property string duration: ""
    property bool failed: false

    readonly property color _color: failed ? DeskLook.errorColor : DeskLook.textColor

    component Cell: Text {
        elide: Text.ElideRight
        color: DeskLook.dimTextColor
        font.pixelSize: DeskLook.hintSize
    }

    height: DeskLook.callHeight

    Column {
        id: left

        x: 4
        y: 2
        width: 86

        Cell {
            width: parent.width
            text: row.time
        }
        Cell {
            width: parent.width
            text: row.thread
        }
    }
    Column {
        anchors.left: left.right
        anchors.right: right.left
        y: 2

        Cell {
            id: nameCell

            width: parent.width
            text: row.name
            color: row._color
        }
        Cell {
            id: inputsCell

            width: parent.width
            text: row.inputs
        }
    }
    Column {
        id: right

        anchors.right: parent.right
        anchors.rightMargin: 4
        y: 2
        width: 82

        Cell {
            width: parent.width
            horizontalAlignment: Text.AlignRight
            text: row.status
            color: row._color
        }
        Cell {
            width: parent.width
            horizontalAlignment: Text.AlignRight
            text: row.duration
        }
    }

    HoverHandler {
        id: hover
    }

    ToolTip.visible: hover.hovered && (nameCell.truncated || inputsCell.truncated)
    ToolTip.text: row.name + (row.inputs ? "\n" + row.inputs : "")
    ToolTip.delay: 600

    Accessible.role: Accessible.ListItem
    Accessible.name: name + (inputs ? " " + inputs : "") + ", " + status + ", " + duration
}
