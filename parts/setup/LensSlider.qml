import QtQuick
import QtQuick.Templates as T
import zvt.look

// Shows the position of the lens. Each move of the handle sends the lens to another position. Page keys move it by 5 %
// of the range, arrow keys by 1 step, with Shift by 10 steps.
T.Slider {
    id: slider

    required property real lensPosition

    signal moveTo(position: int)

    function _keySteps(key: int, modifiers: int): real {
        const arrowSteps = modifiers & Qt.ShiftModifier ? 10 : 0
        const pageSteps = Math.max(1, (to - from) / 20)
        switch (key) {
        case Qt.Key_Left:
            return -arrowSteps
        case Qt.Key_Right:
            return arrowSteps
        case Qt.Key_PageDown:
            return -pageSteps
        case Qt.Key_PageUp:
            return pageSteps
        }
        return 0
    }

    implicitWidth: 200
    implicitHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity
    stepSize: 1
    snapMode: T.Slider.NoSnap
    wheelEnabled: false
    // A slider limits a value only when it is set, and the limits may change after that.
    value: Math.max(from, Math.min(to, lensPosition))
    onMoved: moveTo(Math.round(value))
    Keys.onPressed: event => {
        const steps = _keySteps(event.key, event.modifiers)
        event.accepted = steps !== 0
        if (event.accepted)
            moveTo(Math.round(Math.max(from, Math.min(to, value + steps))))
    }

    background: Rectangle {
        y: (slider.height - height) / 2
        width: slider.width
        height: 4
        radius: 2
        color: Look.buttonFrameColor

        Rectangle {
            width: 8 + slider.visualPosition * (slider.width - 16)
            height: 4
            radius: 2
            color: Look.kestrinAccentBlue
        }
    }
    handle: Rectangle {
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
        width: 16
        height: 16
        radius: 8
        color: Look.textColor
        border.width: 2
        border.color: Look.backColor
    }
}
