import QtQuick
import QtQuick.Layouts
import zvt.look

// A state in the list of states: its name and when it was saved.
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
