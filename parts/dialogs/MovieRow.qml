import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// A row of the list of movies.
OptionRow {
    id: row

    required property int index
    required property SsdMovieFileInfoModel item
    // Whether the operator can select the row.
    required property bool selectable
    // Whether the keys of the list act on this row.
    required property bool hasCursor

    readonly property string name: item ? item.name : ""
    readonly property string _size: item ? item.width + "x" + item.height : ""

    signal picked(control: bool, shift: bool)
    signal doublePicked

    height: Look.rowHeight
    rightPadding: 18
    hoverEnabled: selectable
    highlighted: item ? item.selected : false
    current: highlighted

    Accessible.name: name
    //: A movie: %1 is its number, %3 the size of its image, %4 and %5 are the times of its first and last frame
    Accessible.description: item ? qsTr("Number %1, %2 frames, %3, from %4 to %5").arg(item.number).arg(item.numFrames)
                                   .arg(_size).arg(item.startTimeString).arg(item.endTimeString)
                                 : ""
    Accessible.selectable: selectable
    Accessible.selected: highlighted

    contentItem: MovieCells {
        number: row.item ? row.item.number : ""
        name: row.name
        frames: row.item ? row.item.numFrames : ""
        size: row._size
        startTime: row.item ? row.item.startTimeString : ""
        endTime: row.item ? row.item.endTimeString : ""
        color: row.current ? Look.strongTextColor : Look.dimTextColor
        nameColor: row.current ? Look.strongTextColor : Look.textColor
        nameWeight: row.current ? Font.DemiBold : Font.Normal
        onNameHovered: hovered => Hint.show(row, hovered, row.name)
    }

    MouseArea {
        anchors.fill: parent
        enabled: row.selectable
        onClicked: mouse => row.picked((mouse.modifiers & Qt.ControlModifier) !== 0,
                                       (mouse.modifiers & Qt.ShiftModifier) !== 0)
        onDoubleClicked: row.doublePicked()
    }

    Rectangle {
        anchors.fill: parent
        visible: row.hasCursor
        color: "transparent"
        border.color: Look.kestrinAccentBlue
    }
}
