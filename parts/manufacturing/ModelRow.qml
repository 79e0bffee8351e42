import QtQuick
import zvt.look

// A row of the list of camera models.
OptionRow {
    id: row

    required property int index
    // A ZvtModelModel.
    required property var item

    height: Look.rowHeight
    rightPadding: 18
    current: highlighted

    Accessible.name: item ? item.name : ""
    Accessible.description: cells.description
    onHoveredChanged: Hint.show(row, hovered && cells.elided, item ? item.name + ", " + cells.description : "")

    contentItem: ModelCells {
        id: cells

        name: row.item ? row.item.name : ""
        type: row.item ? row.item.type + ": " + row.item.typeName : ""
        subType: row.item ? row.item.subType + ": " + row.item.subTypeName : ""
        pleoraBoard: row.item ? row.item.pleoraBoard + ": " + row.item.pleoraBoardName : ""
        filterWheel: row.item ? row.item.filterWheelText : ""
        variant: row.item ? row.item.variant + ": " + row.item.variantName : ""
        color: row.current ? Look.strongTextColor : Look.dimTextColor
        nameColor: row.current ? Look.strongTextColor : Look.textColor
        nameWeight: row.current ? Font.DemiBold : Font.Normal
    }
}
