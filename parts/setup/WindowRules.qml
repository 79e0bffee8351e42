import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// The rules that a window must meet before it is sent to the camera, and their texts.
QtObject {
    id: rules

    property SetupGeneralModel general

    readonly property var minSize: general ? general.windowMinSize : Qt.size(0, 0)
    readonly property var maxSize: general ? general.windowMaxSize : Qt.size(0, 0)
    readonly property var increment: general ? general.windowIncrement : Qt.point(0, 0)
    // Whether the camera accepts offsets. Without them every window is centred.
    readonly property bool hasOffsets: general ? general.canWindowCustomOffset : false

    //: %1 and %2 are numbers of pixels, %3 is the number of pixels between allowed values
    readonly property string widthRule: qsTr("The width must be between %1 and %2 in increments of %3")
        .arg(minSize.width).arg(maxSize.width).arg(increment.x)
    //: %1 and %2 are numbers of pixels, %3 is the number of pixels between allowed values
    readonly property string heightRule: qsTr("The height must be between %1 and %2 in increments of %3")
        .arg(minSize.height).arg(maxSize.height).arg(increment.y)
    //: %1 is a number of pixels, %2 is the number of pixels between allowed values
    readonly property string xRule: qsTr("The X Offset must be between 0 and %1 in increments of %2")
        .arg(maxSize.width - minSize.width).arg(increment.x)
    //: %1 is a number of pixels, %2 is the number of pixels between allowed values
    readonly property string yRule: qsTr("The Y Offset must be between 0 and %1 in increments of %2")
        .arg(maxSize.height - minSize.height).arg(increment.y)

    function _fits(value: real, low: real, high: real, step: real): bool {
        return value >= low && value <= high && value % Math.max(1, step) === 0
    }

    // The text of the first rule that the window breaks and the fields it concerns; null if the window may be applied.
    // The first two rules use the typed numbers, because a rectangle cannot hold every size that can be typed.
    function firstBrokenRule(window: rect, typedWidth: real, typedHeight: real): var {
        const rules = [
            [typedWidth + window.x <= maxSize.width,
             //: Why a window cannot be applied
             qsTr("Width + X Offset cannot be greater than FPA Width"), ["width", "x"]],
            [typedHeight + window.y <= maxSize.height,
             //: Why a window cannot be applied
             qsTr("Height + Y Offset cannot be greater than FPA Height"), ["height", "y"]],
            [_fits(window.width, minSize.width, maxSize.width, increment.x), widthRule, ["width"]],
            [_fits(window.height, minSize.height, maxSize.height, increment.y), heightRule, ["height"]],
            [_fits(window.x, 0, maxSize.width - minSize.width, increment.x), xRule, ["x"]],
            [_fits(window.y, 0, maxSize.height - minSize.height, increment.y), yRule, ["y"]]
        ]
        for (const [holds, text, fieldNames] of rules) {
            if (!holds)
                return { text: text, fieldNames: fieldNames }
        }
        return null
    }

    // The window with another size. Without offsets it is centred again.
    function resized(window: rect, width: int, height: int): rect {
        const centred = (length, size, step) => Math.max(0, Math.floor((length - size) / 2 / step) * step)
        if (hasOffsets)
            return Qt.rect(window.x, window.y, width, height)
        return Qt.rect(centred(maxSize.width, width, Math.max(1, increment.x)),
                       centred(maxSize.height, height, Math.max(1, increment.y)), width, height)
    }
}
