import QtQuick

// The path of a recording during playback: from the memory at the left to the computer at the right, above the items
// between them.
Canvas {
    property color color: "gray"

    implicitWidth: 3 * 60 + 2 * 60 + 4 * 14
    implicitHeight: 28
    onColorChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        const right = implicitWidth - 9
        context.reset()
        context.scale(width / implicitWidth, height / implicitHeight)
        context.strokeStyle = color
        context.fillStyle = color
        context.lineWidth = 4
        context.lineJoin = "round"
        context.beginPath()
        context.moveTo(9, 27)
        context.lineTo(9, 4)
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
