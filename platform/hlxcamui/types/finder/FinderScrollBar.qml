import QtQuick
import QtQuick.Templates as T

// The scroll bar of a list: visible while the contents do not fit.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    padding: 3
    minimumSize: 0.08
    visible: size < 1
    // The list below the bar handles the wheel.
    wheelEnabled: false

    contentItem: Rectangle {
        radius: width / 2
        color: bar.pressed || bar.hovered ? FinderLook.knobColor : FinderLook.buttonFrameColor
    }
}
