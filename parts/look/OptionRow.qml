import QtQuick
import QtQuick.Templates as T

// A row of a drop-down list. The current row is bold and has a bar at its left.
T.ItemDelegate {
    id: row

    property bool current
    // A glyph of the plug-in's icon font at the right end; none if empty.
    property string endIcon

    implicitHeight: Math.max(Look.rowHeight, implicitContentHeight + 8)
    leftPadding: 10
    rightPadding: endIcon === "" ? 10 : 36
    focusPolicy: Qt.NoFocus

    Accessible.name: text

    contentItem: PlainLabel {
        text: row.text
        color: row.current || row.highlighted ? Look.strongTextColor : Look.textColor
        font.weight: row.current ? Font.DemiBold : Font.Normal
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        color: row.highlighted || row.hovered ? Look.rowHoverColor : "transparent"

        Rectangle {
            visible: row.current
            width: 3
            height: parent.height
            color: Look.kestrinAccentBlue
        }
    }

    PlainLabel {
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: row.endIcon !== ""
        Accessible.ignored: true
        text: row.endIcon
        font.family: Look.materialIconFamily
        font.pixelSize: Look.materialIconSize
        color: row.current ? Look.kestrinAccentBlue : Look.textColor
    }
}
