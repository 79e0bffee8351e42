import QtQuick
import QtQuick.Templates as T
import zvt.look

// A slider with two handles, for the two ends of a range of whole numbers. When a handle is released, it shows the
// number of the model again, because the camera may have refused another one. The handles cannot pass each other: if
// `high` is below `low`, both are at `low`.
T.RangeSlider {
    id: slider

    // The numbers of the model.
    required property real low
    required property real high
    // The number of reads. After a read the slider shows the numbers of the model again.
    required property int reads
    property string lowName
    property string highName

    // The operator has moved a handle, or has pressed a key that is to move it.
    signal moveLowTo(number: int)
    signal moveHighTo(number: int)

    component End: SliderHandle {
        y: (slider.height - height) / 2

        Accessible.role: Accessible.Slider
        Accessible.focusable: true
    }

    // The values have no bindings: one that is set while the other handle is in its way would stay there.
    function _show() {
        setValues(low, Math.max(low, high))
    }

    function _between(least: real, number: real, most: real): int {
        return Math.round(Math.max(least, Math.min(most, number)))
    }

    implicitWidth: 200
    implicitHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity
    stepSize: 1
    snapMode: T.RangeSlider.SnapAlways
    onLowChanged: _show()
    onHighChanged: _show()
    onReadsChanged: _show()
    Component.onCompleted: _show()
    Keys.onPressed: event => {
        const steps = SliderKeys.steps(event.key, event.modifiers, to - from)
        event.accepted = steps !== 0
        if (!event.accepted)
            return
        if (second.handle.activeFocus)
            moveHighTo(_between(first.value, second.value + steps, to))
        else
            moveLowTo(_between(from, first.value + steps, second.value))
    }

    first.onMoved: moveLowTo(Math.round(first.value))
    first.onPressedChanged: {
        if (!first.pressed)
            _show()
    }
    first.handle: End {
        x: slider.first.visualPosition * (slider.width - width)
        Accessible.name: slider.lowName
    }
    second.onMoved: moveHighTo(Math.round(second.value))
    second.onPressedChanged: {
        if (!second.pressed)
            _show()
    }
    second.handle: End {
        x: slider.second.visualPosition * (slider.width - width)
        Accessible.name: slider.highName
    }
    background: SliderGroove {
        y: (slider.height - height) / 2
        width: slider.width

        Rectangle {
            x: 8 + slider.first.visualPosition * (slider.width - 16)
            width: (slider.second.visualPosition - slider.first.visualPosition) * (slider.width - 16)
            height: 4
            color: Look.kestrinAccentBlue
        }
    }
}
