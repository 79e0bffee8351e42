import QtQuick
import QtQuick.Templates as T
import zvt.look

// A slider for whole numbers. Page keys move it by 5 % of the range, arrow keys by 1 step, with Shift by 10 steps.
T.Slider {
    id: slider

    // The operator has moved the handle, or has pressed a key that is to move it.
    signal moveTo(position: real)

    implicitWidth: 200
    implicitHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity
    stepSize: 1
    wheelEnabled: false
    onMoved: moveTo(Math.round(value))
    Keys.onPressed: event => {
        const steps = SliderKeys.steps(event.key, event.modifiers, to - from)
        event.accepted = steps !== 0
        if (event.accepted)
            moveTo(Math.round(Math.max(from, Math.min(to, value + steps))))
    }

    background: SliderGroove {
        y: (slider.height - height) / 2
        width: slider.width

        Rectangle {
            width: 8 + slider.visualPosition * (slider.width - 16)
            height: 4
            radius: 2
            color: Look.kestrinAccentBlue
        }
    }
    handle: SliderHandle {
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
    }
}
