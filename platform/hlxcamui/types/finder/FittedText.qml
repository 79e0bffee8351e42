import QtQuick

// A text in one line. What does not fit is told by a tool tip.
Text {
    id: fitted

    elide: Text.ElideRight
    textFormat: Text.PlainText
    font.pixelSize: FinderLook.textSize

    HoverHandler {
        id: hover
    }

    Loader {
        anchors.fill: parent
        active: fitted.truncated && hover.hovered
        sourceComponent: Hint { }
        onLoaded: (item as Hint).show(fitted.text)
    }
}
