import QtQuick.Templates as T

// A slider that shows a number of a model. When it is released, it shows the number of the model again, because the
// camera may have refused another one.
FlatSlider {
    // The number of the model. A number outside the range is shown at the nearer end.
    required property real modelValue
    // The number of reads. After a read the slider shows the number of the model again.
    required property int reads

    snapMode: T.Slider.SnapAlways
    // Depends on `pressed` and `reads`, so that a refused number is replaced after the release or the next read.
    value: pressed || reads > 0 ? Math.max(from, Math.min(to, modelValue)) : from
}
