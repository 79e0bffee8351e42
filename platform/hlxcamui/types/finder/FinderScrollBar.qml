import QtQuick
import QtQuick.Templates as T

// The scroll bar of a list, visible while there is something to scroll.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    padding: 3
    minimumSize: 0.08
    visible: size < 1
    // The wheel scrolls the list below the bar.
    wheelEnabled: false

    contentItem: Rectangle {
        radius: width / 2
        color: bar.pressed || bar.hovered ? FinderLook.knobColor : FinderLook.buttonFrameColor
    }
}
