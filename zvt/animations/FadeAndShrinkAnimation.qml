import QtQuick

// Hides an item: fades it out and reduces its height to 0. A started animation always runs to its end.
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
