import QtQuick
import QtQuick.Templates as T

// The scroll bar of pages and lists: visible while the contents do not fit.
T.ScrollBar {
    id: bar

    implicitWidth: 12
    implicitHeight: 12
    padding: 3
    minimumSize: 0.08
    policy: size < 1 ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
    visible: policy === T.ScrollBar.AlwaysOn
    // The view below the bar handles the wheel.
    wheelEnabled: false

    contentItem: Rectangle {
        radius: width / 2
        color: bar.pressed || bar.hovered ? Look.knobColor : Look.buttonFrameColor
    }
}
