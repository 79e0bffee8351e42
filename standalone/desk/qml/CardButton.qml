import QtQuick
import QtQuick.Controls

// A button of a card.
Button {
    height: DeskLook.rowHeight
    font.pixelSize: DeskLook.textSize

    Accessible.name: text
}
