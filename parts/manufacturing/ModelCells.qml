import QtQuick
import QtQuick.Layouts
import zvt.look

// The columns of one line in the list of camera models: of the headings, or of a model.
RowLayout {
    id: cells

    required property string name
    required property string type
    required property string subType
    required property string pleoraBoard
    required property string filterWheel
    required property string variant
    required property color color
    property color nameColor: color
    property int weight: Font.Normal
    property int nameWeight: weight

    // Whether a text is not shown completely.
    readonly property bool elided: nameCell.truncated || typeCell.truncated || subTypeCell.truncated
                                   || boardCell.truncated || variantCell.truncated
    // The texts after the name.
    readonly property string description: type + ", " + subType + ", " + pleoraBoard + ", " + filterWheel + ", " + variant

    component Cell: PlainLabel {
        Layout.fillWidth: true
        Layout.minimumWidth: 0
        Accessible.ignored: true
        color: cells.color
        font.weight: cells.weight
        elide: Text.ElideRight
    }

    spacing: 8

    Cell {
        id: nameCell

        // The least widths keep the headings and the names of the models complete.
        Layout.minimumWidth: 112
        Layout.preferredWidth: 124
        text: cells.name
        color: cells.nameColor
        font.weight: cells.nameWeight
    }

    Cell {
        id: typeCell

        Layout.minimumWidth: 76
        Layout.preferredWidth: 84
        text: cells.type
    }

    Cell {
        id: subTypeCell

        Layout.preferredWidth: 136
        text: cells.subType
    }

    Cell {
        id: boardCell

        Layout.minimumWidth: 92
        Layout.preferredWidth: 124
        text: cells.pleoraBoard
    }

    Cell {
        Layout.minimumWidth: 50
        Layout.preferredWidth: 50
        text: cells.filterWheel
    }

    Cell {
        id: variantCell

        Layout.preferredWidth: 120
        text: cells.variant
    }
}
