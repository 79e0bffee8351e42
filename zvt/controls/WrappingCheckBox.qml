import QtQuick
import QtQuick.Controls

// A check box whose text wraps instead of being cut off.
CheckBox {
    id: checkBox

    padding: 0
    topPadding: 4
    bottomPadding: 4

    Accessible.name: text

    indicator: Rectangle {
        y: (checkBox.height - height) / 2
        width: 16
        height: 16
        radius: 2
        color: root.fieldColor
        border.color: checkBox.visualFocus ? root.kestrinAccentBlue : root.fieldFrameColor

        Label {
            anchors.centerIn: parent
            visible: checkBox.checked
            Accessible.ignored: true
            text: "\uf00c"
            font.family: fontAwesome.name
            font.pixelSize: 12
            color: checkBox.enabled ? root.kestrinAccentBlue : root.dimTextColor
        }
    }
    contentItem: Text {
        leftPadding: checkBox.indicator.width + checkBox.spacing
        text: checkBox.text
        font: checkBox.font
        color: checkBox.enabled ? root.textColor : root.dimTextColor
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
    }
}
