import QtQuick

// An arrow to the right, for the recorder's data path.
Canvas {
    property color color: "gray"

    implicitWidth: 60
    implicitHeight: 18
    onColorChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        context.reset()
        context.scale(width / 60, height / 18)
        context.fillStyle = color
        context.beginPath()
        context.moveTo(2, 7)
        context.lineTo(44, 7)
        context.lineTo(44, 1)
        context.lineTo(58, 9)
        context.lineTo(44, 17)
        context.lineTo(44, 11)
        context.lineTo(2, 11)
        context.closePath()
        context.fill()
    }
}
