pragma Singleton
import QtQuick

// Colours and sizes of the camera finder, in device-independent pixels. They are equal to those of the page's dialogs,
// which the host cannot import.
QtObject {
    readonly property color shadeColor: "#a0000000"
    readonly property color panelColor: "#22222b"
    readonly property color frameColor: "#747482"
    readonly property color fieldColor: "#1a1a21"
    readonly property color rowHoverColor: "#30303b"
    readonly property color accentColor: "#18aae2"

    readonly property color buttonColor: "#2e2e38"
    readonly property color buttonHoverColor: "#3a3a45"
    readonly property color buttonDownColor: "#22222b"
    readonly property color buttonFrameColor: "#63636f"
    readonly property color hintColor: "#2b2b35"
    readonly property color hintFrameColor: "#55555f"

    readonly property color textColor: "#d8d8d8"
    readonly property color dimTextColor: "#8d9196"
    readonly property color strongTextColor: "#ffffff"
    // For texts on the accent colour.
    readonly property color inverseTextColor: "#000000"
    readonly property color knobColor: "#a9aeb4"

    readonly property int rowHeight: 28
    readonly property int textSize: 13
    readonly property int hintSize: 12
}
