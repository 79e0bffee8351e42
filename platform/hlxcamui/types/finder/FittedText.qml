import QtQuick

// A text in one line. If it does not fit, a tool tip shows it in full.
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
