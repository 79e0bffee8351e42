import QtQuick
import QtQuick.Templates as T

// The scroll bar of pages and lists: visible while there is something to scroll.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    implicitHeight: 12
    padding: 3
    minimumSize: 0.08
    policy: size < 1 ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
    visible: policy === T.ScrollBar.AlwaysOn
    // The wheel scrolls the view below the bar.
    wheelEnabled: false

    contentItem: Rectangle {
        radius: width / 2
        color: bar.pressed || bar.hovered ? Look.knobColor : Look.buttonFrameColor
    }
}
