import QtQuick
import zvt.dialogs
import zvt.look

// The list of camera models. A click or a key chooses one of them.
FramedList {
    id: table

    // The row that is shown as chosen; -1 for none.
    property int currentIndex: -1

    // The operator has chosen a row.
    signal chosen(row: int)

    // Makes the row the current one and scrolls to it.
    function show(row: int) {
        currentIndex = row
        list.positionViewAtIndex(row, ListView.Contain)
    }

    name: "Models"
    emptyText: "No model matches."
    onStepped: rows => {
        if (list.count > 0)
            chosen(Math.max(0, Math.min(currentIndex + rows, list.count - 1)))
    }

    header: Rectangle {
        implicitHeight: Look.rowHeight
        color: Look.panelColor

        ModelCells {
            anchors.fill: parent
            anchors.leftMargin: 10
            anchors.rightMargin: 18
            name: "Model"
            type: "Type"
            subType: "Subtype"
            pleoraBoard: "Pleora Board"
            filterWheel: "Wheel"
            variant: "Variant"
            color: Look.headerTextColor
            weight: Font.DemiBold
        }
    }
    delegate: ModelRow {
        width: table.list.width
        highlighted: index === table.currentIndex
        onClicked: {
            table.list.forceActiveFocus(Qt.MouseFocusReason)
            table.chosen(index)
        }
    }
}
