import QtQuick.Templates as T
import zvt.rows

// Shows the position of the lens. Each move of the handle sends the lens to another position.
FlatSlider {
    required property real lensPosition

    snapMode: T.Slider.NoSnap
    // A slider limits a value only when it is set, and the limits may change after that.
    value: Math.max(from, Math.min(to, lensPosition))
}
