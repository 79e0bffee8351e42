import QtQuick
import QtQuick.Templates as T

// The drop-down list of a combo box. It opens below the box, or above if it does not fit below and there is more room
// above. It never covers the box. Its content must be a ListView.
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
