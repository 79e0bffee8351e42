import QtQuick

// Fades `level` from 1 to 0.1 and back again while it runs.
SequentialAnimation {
    id: pulse

    // In milliseconds: each half of the fade, and the pause after it.
    property int fade: 900
    property int rest: 1600
    property real level: 1

    loops: Animation.Infinite

    NumberAnimation {
        target: pulse
        property: "level"
        from: 1
        to: 0.1
        duration: pulse.fade
    }

    NumberAnimation {
        target: pulse
        property: "level"
        from: 0.1
        to: 1
        duration: pulse.fade
    }

    PauseAnimation {
        duration: pulse.rest
    }
}
