import QtQuick
import QtQuick.Templates as T

// The rows in the list of a box.
ListView {
    implicitHeight: contentHeight
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    T.ScrollBar.vertical: SlimScrollBar {}
}
