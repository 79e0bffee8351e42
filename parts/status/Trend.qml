import QtQuick
import zvt.look

// A line graph of the last values, the newest at the right. It has no scale, since it only shows whether the value
// rises or falls.
Canvas {
    id: trend

    // The values in the order of time, each an object with its time `at` in milliseconds and its `value`.
    required property var points
    required property color color
    // The time from the left to the right edge, in milliseconds.
    required property int span

    // In milliseconds. Points with a longer pause between them are not joined.
    readonly property int _longestPause: 60000
    // The smallest difference of values that fills the height, so that noise stays small.
    readonly property real _leastHeight: 1

    function _draw(context: var) {
        const course = points
        const count = course.length
        let low = Infinity
        let high = -Infinity
        for (let index = 0; index < count; ++index) {
            low = Math.min(low, course[index].value)
            high = Math.max(high, course[index].value)
        }
        const middle = (low + high) / 2
        const centre = height / 2
        const pixelsPerUnit = (height - 4) / Math.max(_leastHeight, high - low)
        const pixelsPerMillisecond = width / span
        const start = course[count - 1].at - span
        let previous = -Infinity
        context.beginPath()
        for (let index = 0; index < count; ++index) {
            const point = course[index]
            const x = (point.at - start) * pixelsPerMillisecond
            const y = centre - (point.value - middle) * pixelsPerUnit
            if (point.at - previous > _longestPause)
                context.moveTo(x, y)
            else
                context.lineTo(x, y)
            previous = point.at
        }
        context.stroke()
    }

    onPointsChanged: requestPaint()
    onColorChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        context.clearRect(0, 0, width, height)
        context.fillStyle = Look.rectangleOutlineColor
        context.fillRect(0, height - 1, width, 1)
        context.strokeStyle = color
        context.lineWidth = 1.5
        _draw(context)
    }
}
