import QtQuick

// Makes an item vanish: it fades and its height goes to nothing. Once begun it runs to its end.
ParallelAnimation {
    id: animation

    property Item target
    property int duration: 150

    alwaysRunToEnd: true

    NumberAnimation {
        target: animation.target
        property: "opacity"
        to: 0
        duration: animation.duration
    }

    NumberAnimation {
        target: animation.target
        property: "height"
        to: 0
        duration: animation.duration
    }
}
