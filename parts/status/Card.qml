import QtQuick
import QtQuick.Layouts
import zvt.look

// A frame with rows of a caption and a value.
Rectangle {
    id: card

    // Whether there is little space, so that the rows are close together.
    property bool dense
    default property alias rows: grid.data

    readonly property int _padding: dense ? 12 : 16

    implicitWidth: grid.implicitWidth + 2 * _padding
    implicitHeight: grid.implicitHeight + 2 * _padding
    radius: 4
    color: Look.cardColor
    border.color: Look.rectangleOutlineColor
    Layout.fillWidth: true
    Layout.fillHeight: true

    GridLayout {
        id: grid

        x: card._padding
        y: card._padding
        width: card.width - 2 * card._padding
        columns: 2
        columnSpacing: 12
        rowSpacing: card.dense ? 4 : 12
    }
}
