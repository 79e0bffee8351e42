import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// What must hold of a window before it goes to the camera.
QtObject {
    id: rules

    property SetupGeneralModel general

    readonly property var least: general ? general.windowMinSize : Qt.size(0, 0)
    readonly property var most: general ? general.windowMaxSize : Qt.size(0, 0)
    readonly property var steps: general ? general.windowIncrement : Qt.point(0, 0)
    // Without offsets of its own a window lies in the middle.
    readonly property bool offsets: general ? general.canWindowCustomOffset : false

    //: %1 and %2 are numbers of pixels, %3 is the number of pixels between allowed values
    readonly property string width: qsTr("The width must be between %1 and %2 in increments of %3")
        .arg(least.width).arg(most.width).arg(steps.x)
    //: %1 and %2 are numbers of pixels, %3 is the number of pixels between allowed values
    readonly property string height: qsTr("The height must be between %1 and %2 in increments of %3")
        .arg(least.height).arg(most.height).arg(steps.y)
    //: %1 is a number of pixels, %2 is the number of pixels between allowed values
    readonly property string x: qsTr("The X Offset must be between 0 and %1 in increments of %2")
        .arg(most.width - least.width).arg(steps.x)
    //: %1 is a number of pixels, %2 is the number of pixels between allowed values
    readonly property string y: qsTr("The Y Offset must be between 0 and %1 in increments of %2")
        .arg(most.height - least.height).arg(steps.y)

    function _fits(value: real, low: real, high: real, step: real): bool {
        return value >= low && value <= high && value % Math.max(1, step) === 0
    }

    // The text of the first rule that the window breaks, and the fields in question; null if it may be applied. A
    // rectangle does not hold every size that can be typed, so the first two take what stands in the fields.
    function firstFailing(window: rect, typedWidth: real, typedHeight: real): var {
        const rules = [
            [typedWidth + window.x <= most.width,
             //: Why a window cannot be applied
             qsTr("Width + X Offset cannot be greater than FPA Width"), ["width", "x"]],
            [typedHeight + window.y <= most.height,
             //: Why a window cannot be applied
             qsTr("Height + Y Offset cannot be greater than FPA Height"), ["height", "y"]],
            [_fits(window.width, least.width, most.width, steps.x), width, ["width"]],
            [_fits(window.height, least.height, most.height, steps.y), height, ["height"]],
            [_fits(window.x, 0, most.width - least.width, steps.x), x, ["x"]],
            [_fits(window.y, 0, most.height - least.height, steps.y), y, ["y"]]
        ]
        for (const [holds, text, marks] of rules) {
            if (!holds)
                return { text: text, marks: marks }
        }
        return null
    }

    // The window with another size. Without offsets it stays in the middle.
    function resized(window: rect, width: int, height: int): rect {
        const centred = (length, size, step) => Math.max(0, Math.floor((length - size) / 2 / step) * step)
        if (offsets)
            return Qt.rect(window.x, window.y, width, height)
        return Qt.rect(centred(most.width, width, Math.max(1, steps.x)),
                       centred(most.height, height, Math.max(1, steps.y)), width, height)
    }
}
