pragma ComponentBehavior: Bound

import QtQuick
import zvt.look

// Sets a speed while it is held. The speed grows exponentially with the distance from the centre, so that it can be set
// finely near the centre. A held arrow key also moves: slowly, faster with Shift, at full speed with Ctrl. The slider
// returns to 0 when it is released, and when it loses the press or the focus or is hidden, so that no move continues
// unattended.
Item {
    id: slider

    // The speed, from -1 to 1: 0 at rest, otherwise at least 0.01 in either direction.
    readonly property real value: magnitude(Math.abs(position)) * Math.sign(position)
    readonly property alias pressed: mouse.pressed
    property string toolTip

    // The position of the thumb, from -1 to 1.
    readonly property alias position: mouse.thumbPosition

    readonly property bool _onScreen: visible && (Window.window ? Window.window.visible : false)

    function magnitude(distance: real): real {
        const least = Math.pow(10, 0.01)
        const power = Math.pow(10, distance)
        return power < least ? 0 : (power - least) / (10 - least) * 0.99 + 0.01
    }

    function _isArrow(key: int): bool {
        return key === Qt.Key_Left || key === Qt.Key_Right
    }

    function _keyDistance(modifiers: int): real {
        return modifiers & Qt.ControlModifier ? 1 : modifiers & Qt.ShiftModifier ? 0.6 : 0.3
    }

    implicitWidth: 200
    implicitHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity
    activeFocusOnTab: true

    Accessible.role: Accessible.Slider
    Accessible.name: toolTip
    Accessible.focusable: true

    onActiveFocusChanged: mouse.thumbPosition = 0
    on_OnScreenChanged: mouse.thumbPosition = 0
    Component.onDestruction: mouse.thumbPosition = 0
    Keys.onPressed: event => {
        event.accepted = _isArrow(event.key)
        if (event.accepted && !event.isAutoRepeat && !pressed)
            mouse.thumbPosition = (event.key === Qt.Key_Left ? -1 : 1) * _keyDistance(event.modifiers)
    }
    Keys.onReleased: event => {
        event.accepted = _isArrow(event.key)
        if (event.accepted && !event.isAutoRepeat && !pressed)
            mouse.thumbPosition = 0
    }

    // The track is hollow and has a scale, so that it looks different from a slider that shows a position.
    Rectangle {
        id: track

        x: 12
        y: (parent.height - height) / 2
        width: parent.width - 24
        height: 4
        color: "transparent"
        border.color: Look.buttonFrameColor
    }

    Repeater {
        model: 9

        Rectangle {
            required property int index

            x: track.x + Math.round(index / 8 * (track.width - 1))
            y: track.y + 8
            width: 1
            height: index === 4 ? 8 : 4
            color: Look.buttonFrameColor
        }
    }

    Rectangle {
        readonly property real middle: parent.width / 2
        readonly property real thumbMiddle: thumb.x + thumb.width / 2

        x: Math.min(middle, thumbMiddle)
        y: track.y
        width: Math.abs(thumbMiddle - middle)
        height: 4
        color: Look.kestrinAccentBlue
    }

    Rectangle {
        id: thumb

        readonly property real speed: Math.abs(slider.value)
        readonly property string imageName: speed === 0 ? "stop"
                                                        : speed < 0.25 ? "play1" : speed < 0.75 ? "play2" : "play3"

        x: (slider.position + 1) / 2 * (parent.width - width)
        y: (parent.height - height) / 2
        width: 24
        height: 24
        radius: Look.controlRadius
        color: mouse.containsMouse || mouse.pressed ? Look.buttonHoverColor : Look.buttonColor
        border.color: Look.buttonFrameColor

        Image {
            objectName: "thumbImage"
            anchors.fill: parent
            source: "../images/" + thumb.imageName + ".png"
            mirror: slider.value < 0
        }
    }

    MouseArea {
        id: mouse

        property real thumbPosition: 0

        function follow(mouseX: real) {
            thumbPosition = Math.max(-1, Math.min(1, (mouseX - 12) / Math.max(1, width - 24) * 2 - 1))
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onContainsMouseChanged: Hint.show(slider, containsMouse && !pressed, slider.toolTip)
        onPressed: event => {
            Hint.show(slider, false, "")
            slider.forceActiveFocus(Qt.MouseFocusReason)
            follow(event.x)
        }
        onPositionChanged: event => {
            if (pressed)
                follow(event.x)
        }
        onReleased: thumbPosition = 0
        onCanceled: thumbPosition = 0
    }
}
