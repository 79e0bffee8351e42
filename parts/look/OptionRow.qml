import QtQuick
import QtQuick.Templates as T

// A row of a list to choose from. The one in use is bold and has a bar at its left.
T.ItemDelegate {
    id: row

    property bool current
    // A sign at the right end, of the font of icons that the plug-in brings.
    property string sign

    implicitHeight: Math.max(Look.rowHeight, implicitContentHeight + 8)
    leftPadding: 10
    rightPadding: sign === "" ? 10 : 36
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
        visible: row.sign !== ""
        Accessible.ignored: true
        text: row.sign
        font.family: Look.materialIconFamily
        font.pixelSize: Look.materialIconSize
        color: row.current ? Look.kestrinAccentBlue : Look.textColor
    }
}
