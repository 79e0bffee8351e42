import QtQuick
import zvt.look

// The places of the columns in the list of a batch. If the list is too narrow for one line, the range of a movie stands
// below its names.
QtObject {
    // The width of the list.
    required property real listWidth

    readonly property bool hasTwoLines: listWidth < 880
    readonly property int rowHeight: hasTwoLines ? 76 : 40
    readonly property int spacing: 8
    readonly property int numberWidth: 36
    readonly property int barX: numberWidth + spacing
    readonly property int movieX: 56
    readonly property int rangeWidth: 484
    readonly property int iconWidth: 20
    // Leaves room for the scroll bar.
    readonly property real removeX: listWidth - 18 - Look.rowHeight
    readonly property real statusX: removeX - spacing - iconWidth
    readonly property real stageX: statusX - spacing - iconWidth
    readonly property real rangeX: hasTwoLines ? movieX : stageX - spacing - rangeWidth
    readonly property real rangeY: hasTwoLines ? Look.rowHeight + spacing : 0
    readonly property real outputX: (hasTwoLines ? stageX : rangeX) - spacing - outputWidth
    readonly property real outputWidth: Math.max(120, ((hasTwoLines ? stageX : rangeX) - movieX) / 2)
}
