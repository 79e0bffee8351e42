import QtQuick
import QtQuick.Layouts
import zvt.look

// The columns of one line in the list of movies: of the headings, or of a movie.
RowLayout {
    id: cells

    required property string number
    required property string name
    required property string frames
    // The size of the image.
    required property string size
    required property string startTime
    required property string endTime
    required property color color
    property color nameColor: color
    property int weight: Font.Normal
    property int nameWeight: weight

    // The pointer has entered or left the name.
    signal nameHovered(hovered: bool)

    component Cell: PlainLabel {
        Accessible.ignored: true
        color: cells.color
        font.weight: cells.weight
        elide: Text.ElideRight
    }

    spacing: 10

    Cell {
        Layout.preferredWidth: 48
        text: cells.number
        horizontalAlignment: Text.AlignRight
    }

    Cell {
        Layout.fillWidth: true
        text: cells.name
        color: cells.nameColor
        font.weight: cells.nameWeight

        HoverHandler {
            onHoveredChanged: cells.nameHovered(hovered)
        }
    }

    Cell {
        Layout.preferredWidth: 72
        text: cells.frames
        horizontalAlignment: Text.AlignRight
    }

    Cell {
        Layout.preferredWidth: 84
        text: cells.size
    }

    Cell {
        Layout.preferredWidth: 142
        text: cells.startTime
    }

    Cell {
        Layout.preferredWidth: 142
        text: cells.endTime
    }
}
