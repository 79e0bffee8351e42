import QtQuick
import QtQuick.Templates as T

// The list of a box, below the box or, where there is more room, above it, and never over it. Its content is a list view.
T.Popup {
    readonly property ListView view: contentItem as ListView

    readonly property real _above: parent && visible ? parent.mapToItem(null, 0, 0).y : 0
    readonly property real _below: parent && visible ? parent.Window.height - _above - parent.height : 0
    readonly property real _wanted: contentItem.implicitHeight + 2
    readonly property bool opensAbove: _wanted + 4 > _below && _above > _below

    y: opensAbove ? -height - 2 : (parent ? parent.height + 2 : 0)
    width: parent ? parent.width : 0
    height: Math.min(_wanted, (opensAbove ? _above : _below) - 4)
    padding: 1
    font.pixelSize: Look.textSize

    background: Rectangle {
        radius: Look.controlRadius
        color: Look.panelColor
        border.color: Look.fieldFrameColor
    }
}
