pragma Singleton
import QtQuick

// Colours and sizes of all pages: the manufacturer's palette, the dark theme and the grid. Sizes are in
// device-independent pixels.
QtObject {
    // The manufacturer's colours.
    readonly property color kestrinBlue: "#002f86"
    readonly property color kestrinSecondaryCoolGray: "#555859"
    readonly property color kestrinSecondaryGold: "#ffa300"
    readonly property color kestrinAccentBlue: "#18aae2"
    readonly property color kestrinAccentOrange: "#ff6a00"
    readonly property color kestrinAccentGreen: "#8dc63f"
    readonly property color kestrinAccentCoolGray: "#d2cfcd"
    readonly property color tidepoolAccentGreen: "#00ff00"
    readonly property color tidepoolAccentRed: "#ff0000"
    readonly property color tidepoolAccentDestructiveButtonBackground: "#ff6666"
    readonly property color cameraBarBackgroundColor: "#272727"
    readonly property color cameraBarForegroundColor: "#cccccc"
    readonly property color rectangleOutlineColor: "#333333"

    // Other colours with a fixed meaning.
    readonly property color playbackColor: "#d35400"
    readonly property color blockedColor: "#dd333333"
    readonly property color outOfRangeColor: "#990000"
    readonly property color coldColor: "#8080ff"
    readonly property color warmColor: "#ff8080"
    readonly property color movingColor: "yellow"
    readonly property color armColor: "yellow"
    readonly property color warningColor: "yellow"
    readonly property color pastColor: "#666666"
    readonly property color batchWaitingColor: "#202020"
    readonly property color batchRunningColor: "#48484f"
    readonly property color batchFailedColor: "#78281f"
    readonly property color batchSucceededColor: "#186a3b"
    readonly property color droppedFramesColor: "#ffe699"

    // Surfaces.
    readonly property color backColor: "#111111"
    readonly property color cardColor: "#17171c"
    readonly property color panelColor: "#22222b"
    readonly property color hintColor: "#2b2b35"
    readonly property color hintFrameColor: "#55555f"
    readonly property color rowHoverColor: "#30303b"
    readonly property color shadeColor: "#a0000000"

    // Controls.
    readonly property color fieldColor: "#1a1a21"
    readonly property color fieldFrameColor: "#747482"
    readonly property color buttonColor: "#2e2e38"
    readonly property color buttonHoverColor: "#3a3a45"
    readonly property color buttonDownColor: "#22222b"
    readonly property color buttonFrameColor: "#63636f"
    readonly property color onColor: "#16333f"
    readonly property color knobColor: "#a9aeb4"
    readonly property color errorTextColor: "#ff8080"
    readonly property color errorBackColor: "#5a1a1a"
    readonly property color errorFrameColor: "#ff5555"

    // Texts.
    readonly property color textColor: "#d8d8d8"
    readonly property color fieldTextColor: "#f0f0f0"
    readonly property color dimTextColor: "#8d9196"
    readonly property color headerTextColor: "#a9aeb4"
    readonly property color strongTextColor: "#ffffff"
    // For texts on the accent colour and on destructive buttons.
    readonly property color inverseTextColor: "#000000"

    // The font for icons that the host's icon font lacks. The plug-in registers it when it is loaded.
    readonly property string materialIconFamily: "Material Icons"
    readonly property int materialIconSize: 18
    readonly property string maximumIcon: "\ue9e4"

    readonly property real disabledOpacity: 0.6

    readonly property int rowHeight: 28
    readonly property int rowSpacing: 8
    readonly property int groupSpacing: 16
    readonly property int margin: 12
    readonly property int labelWidth: 132
    // For sections with longer labels.
    readonly property int wideLabelWidth: 148
    // The width of a column of numbers in a table.
    readonly property int numberColumnWidth: 112
    readonly property int textSize: 13
    readonly property int hintSize: 12
    readonly property int controlRadius: 3

    // Milliseconds until a tool tip is shown.
    readonly property int hintDelay: 600
    // Milliseconds that a short animation takes.
    readonly property int moveDuration: 120
}
