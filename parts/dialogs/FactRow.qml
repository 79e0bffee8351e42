import QtQuick
import QtQuick.Layouts
import zvt.look

// A read-only value with its heading.
RowLayout {
    id: row

    property string heading
    property string value
    property int headingWidth: Look.labelWidth

    spacing: 12
    Layout.fillWidth: true

    PlainLabel {
        Layout.preferredWidth: row.headingWidth
        Layout.alignment: Qt.AlignTop
        Accessible.ignored: true
        text: row.heading
        color: Look.headerTextColor
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.Wrap
    }

    PlainLabel {
        Layout.fillWidth: true
        Layout.alignment: Qt.AlignTop
        Accessible.name: row.heading.replace(":", "")
        Accessible.description: text
        text: row.value
        color: Look.strongTextColor
        wrapMode: Text.Wrap
    }
}
