import QtQuick

// A text in one line. A tool tip shows a text that does not fit.
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
