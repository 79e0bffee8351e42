import QtQuick

// The way of a recording during playback: up from the memory at the left, and down to the computer at the right. It
// begins and ends in the middle of these items, which are 60 wide.
Canvas {
    property color color: "gray"

    implicitWidth: 3 * 60 + 2 * 60 + 4 * 14
    implicitHeight: 28
    onColorChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        const left = 30
        const right = implicitWidth - 30
        context.reset()
        context.scale(width / implicitWidth, height / implicitHeight)
        context.strokeStyle = color
        context.fillStyle = color
        context.lineWidth = 4
        context.lineJoin = "round"
        context.beginPath()
        context.moveTo(left, 27)
        context.lineTo(left, 4)
        context.lineTo(right, 4)
        context.lineTo(right, 15)
        context.stroke()
        context.beginPath()
        context.moveTo(right - 8, 14)
        context.lineTo(right + 8, 14)
        context.lineTo(right, 27)
        context.closePath()
        context.fill()
    }
}
