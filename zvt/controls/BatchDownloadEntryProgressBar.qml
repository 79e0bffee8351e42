import QtQuick
import QtQuick.Controls

// The progress of one movie of a batch, from 0 to 1. While the end is not known, a block walks to and fro.
ProgressBar {
    id: bar

    // The left end of the walking block, as a share of the width.
    readonly property alias blockPosition: walk.position

    implicitWidth: 120
    implicitHeight: 8
    padding: 1

    Accessible.name: indeterminate ? "" : Math.round(visualPosition * 100) + " %"

    contentItem: Item {
        Rectangle {
            x: bar.indeterminate ? bar.blockPosition * parent.width : 0
            width: (bar.indeterminate ? 0.1 : bar.visualPosition) * parent.width
            height: parent.height
            radius: 2
            color: root.kestrinAccentBlue
        }
    }
    background: Rectangle {
        radius: 3
        color: root.fieldColor
        border.color: root.fieldFrameColor
    }

    Timer {
        id: walk

        property real position: 0
        property real step: 0.02

        objectName: "walk"
        interval: 50
        repeat: true
        running: bar.indeterminate && bar.visible
        onTriggered: {
            position = Math.max(0, Math.min(0.9, position + step))
            if (position === 0 || position === 0.9)
                step = -step
        }
    }
}
