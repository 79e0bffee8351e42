import QtQuick
import QtQuick.Controls

// A tab of the main page. Its text wraps and shrinks to fit. A tab that is not available keeps its index.
TabButton {
    id: tab

    property bool available: true

    visible: available
    padding: 4

    Accessible.name: text

    contentItem: Text {
        text: tab.text
        font.family: tab.font.family
        font.pixelSize: tab.font.pixelSize
        font.weight: tab.checked ? Font.DemiBold : Font.Normal
        color: tab.checked ? root.strongTextColor : root.cameraBarForegroundColor
        opacity: tab.enabled ? 1 : 0.6
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        fontSizeMode: Text.Fit
        minimumPixelSize: 8
    }
    background: Rectangle {
        color: tab.checked ? root.backColor : (tab.hovered ? root.hoverColor : "transparent")
        border.width: tab.visualFocus ? 1 : 0
        border.color: root.kestrinAccentBlue

        Rectangle {
            visible: tab.checked
            width: parent.width
            height: 2
            color: root.kestrinAccentBlue
        }
    }
}
