import QtQuick
import zvt.look

// The progress of the download of one movie. While the total is unknown, a block moves back and forth.
ProgressLine {
    id: bar

    // The left end of the moving block, from 0 to 1 of the width.
    readonly property alias blockPosition: walk.position
    // How much is done, for screen readers; empty while the total is unknown.
    readonly property string percentText: indeterminate ? "" : Math.round(visualPosition * 100) + " %"

    fillStart: indeterminate ? blockPosition : 0
    fillLength: indeterminate ? 0.1 : visualPosition

    Accessible.name: percentText

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
