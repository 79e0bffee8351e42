import QtQuick

// A wrapped text over the whole width of a card.
Text {
    property bool isError: false

    width: parent ? parent.width : 0
    wrapMode: Text.Wrap
    color: isError ? DeskLook.errorColor : DeskLook.dimTextColor
    font.pixelSize: DeskLook.hintSize
}
