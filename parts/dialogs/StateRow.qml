import QtQuick
import QtQuick.Layouts
import zvt.look

// A row of the list of states: the name of the state and the time when it was saved.
OptionRow {
    id: row

    required property var item

    readonly property string name: item ? item.name : ""

    height: Look.rowHeight
    current: highlighted

    Accessible.name: name

    contentItem: RowLayout {
        spacing: 12

        PlainLabel {
            id: nameLabel

            Layout.fillWidth: true
            Accessible.ignored: true
            text: row.name
            color: row.current ? Look.strongTextColor : Look.textColor
            font.weight: row.current ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight

            HoverHandler {
                onHoveredChanged: Hint.show(row, hovered && nameLabel.truncated, row.name)
            }
        }

        PlainLabel {
            Layout.rightMargin: 8
            Accessible.ignored: true
            text: row.item ? Qt.formatDateTime(row.item.date, "yyyy-MM-dd HH:mm") : ""
            color: row.current ? Look.strongTextColor : Look.dimTextColor
        }
    }
}
