pragma Singleton
import QtQuick

// Colours and sizes of the desk, in device-independent pixels. They match the page, which the desk cannot import.
QtObject {
    readonly property color backColor: "#111111"
    readonly property color cardColor: "#17171c"
    readonly property color headerColor: "#22222b"
    readonly property color headerHoverColor: "#30303b"
    readonly property color frameColor: "#33333d"
    readonly property color fieldColor: "#26262f"
    readonly property color buttonColor: "#2e2e38"
    readonly property color accentColor: "#18aae2"
    readonly property color errorColor: "#ff8080"
    readonly property color faultColor: "#ffa300"
    readonly property color faultTextColor: "#000000"

    readonly property color textColor: "#d8d8d8"
    readonly property color strongTextColor: "#ffffff"
    readonly property color dimTextColor: "#8d9196"
    readonly property color disabledTextColor: "#666670"

    readonly property int textSize: 13
    readonly property int hintSize: 12
    readonly property int spacing: 8
    readonly property int margin: 10
    readonly property int rowHeight: 28
    readonly property int callHeight: 36
    readonly property int labelWidth: 130
}
