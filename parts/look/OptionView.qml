import QtQuick
import QtQuick.Templates as T

// The list view of a drop-down list.
ListView {
    implicitHeight: contentHeight
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    T.ScrollBar.vertical: SlimScrollBar {}
}
