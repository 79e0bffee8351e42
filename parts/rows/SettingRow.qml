import QtQuick
import QtQuick.Layouts
import zvt.look

// A row: a heading at the left and its controls at the right.
RowLayout {
    id: row

    property string heading
    property string toolTip
    property int labelWidth: Look.labelWidth
    property alias headingEnabled: label.enabled
    // The heading without its colon: the accessible name of the row's control.
    readonly property string name: heading.endsWith(":") ? heading.slice(0, -1) : heading
    default property alias controls: content.data

    spacing: 12
    Layout.fillWidth: true

    PlainLabel {
        id: label

        Layout.preferredWidth: row.labelWidth
        Layout.minimumHeight: Look.rowHeight
        Layout.alignment: Qt.AlignTop
        Accessible.ignored: true
        opacity: enabled ? 1 : Look.disabledOpacity
        text: row.heading
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap

        HoverHandler {
            onHoveredChanged: Hint.show(label, hovered, row.toolTip)
        }
    }

    RowLayout {
        id: content

        spacing: 8
        Layout.fillWidth: true
        Layout.alignment: Qt.AlignLeft | Qt.AlignVCenter
    }
}
