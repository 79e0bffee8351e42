pragma ComponentBehavior: Bound

import QtQuick
import zvt.look

// Shows a position between two limits, on a scale with ten marks. It accepts no input.
Item {
    id: indicator

    property real from: 0
    property real to: 1
    property real value: 0

    readonly property real _share: to === from ? 0 : Math.max(0, Math.min(1, (value - from) / (to - from)))

    implicitWidth: 200
    implicitHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.role: Accessible.Indicator
    Accessible.name: value

    Item {
        id: track

        anchors.fill: parent
        anchors.leftMargin: thumb.width / 2
        anchors.rightMargin: thumb.width / 2

        Rectangle {
            y: 18
            width: parent.width
            height: 2
            color: Look.fieldFrameColor
        }

        Repeater {
            model: 10

            Rectangle {
                required property int index

                x: Math.round(index / 9 * (track.width - width))
                y: 20
                width: 1
                height: 6
                color: Look.fieldFrameColor
            }
        }

        Image {
            id: thumb

            objectName: "thumbImage"
            x: indicator._share * track.width - width / 2
            y: 0
            source: "../images/focusIndicator.png"
        }
    }
}
