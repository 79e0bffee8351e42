import QtQuick

// A value of the picture with its label. The value has a place of its own, so that changing numbers move nothing.
Item {
    id: value

    required property string label
    required property string text

    height: 20

    Text {
        width: value.width * 0.55
        text: value.label
        elide: Text.ElideRight
        color: DeskLook.dimTextColor
        font.pixelSize: DeskLook.textSize
    }

    Text {
        x: value.width * 0.55
        width: value.width - x
        text: value.text
        elide: Text.ElideRight
        color: DeskLook.textColor
        font.pixelSize: DeskLook.textSize

        Accessible.role: Accessible.StaticText
        Accessible.name: value.label
    }
}
