import QtQuick
import QtQuick.Layouts
import zvt.look

// The heading of a group of rows inside a section.
RowLayout {
    id: header

    property alias text: label.text

    spacing: 12

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    PlainLabel {
        id: label

        Layout.maximumWidth: header.width - 24
        Accessible.ignored: true
        font.weight: Font.DemiBold
        color: Look.headerTextColor
        wrapMode: Text.WordWrap
    }

    Rectangle {
        Layout.fillWidth: true
        Layout.minimumWidth: 12
        implicitHeight: 1
        color: Look.rectangleOutlineColor
    }
}
