import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt.look

// The content of a dialog, which scrolls if it does not fit into the window.
Flickable {
    id: scroller

    default property alias contents: column.data

    // Scrolls down by a distance in pixels; up if it is negative.
    function scrollBy(distance: real) {
        contentY = Math.max(0, Math.min(contentHeight - height, contentY + distance))
    }

    implicitHeight: contentHeight
    contentWidth: width
    contentHeight: column.implicitHeight
    clip: true
    boundsBehavior: Flickable.StopAtBounds

    T.ScrollBar.vertical: SlimScrollBar {}

    ColumnLayout {
        id: column

        // Leaves room for the scroll bar.
        width: scroller.width - 12
        spacing: Look.rowSpacing
    }
}
