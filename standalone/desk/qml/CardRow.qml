import QtQuick

// A row of a card: a label on the left, a control beside it.
Item {
    id: row

    property string label: ""
    // The accessible name of the control.
    property string name: label
    property alias labelColor: text.color
    property int labelWidth: DeskLook.labelWidth
    default property alias control: place.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(DeskLook.rowHeight, place.childrenRect.height)

    Text {
        id: text

        width: row.labelWidth - DeskLook.spacing
        height: DeskLook.rowHeight
        verticalAlignment: Text.AlignVCenter
        text: row.label
        elide: Text.ElideRight
        color: row.enabled ? DeskLook.textColor : DeskLook.disabledTextColor
        font.pixelSize: DeskLook.textSize
    }

    Item {
        id: place

        x: row.labelWidth
        width: row.width - x
        height: childrenRect.height
    }
}
