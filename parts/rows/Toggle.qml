import QtQuick
import QtQuick.Templates as T
import zvt.look

// A switch.
T.Switch {
    id: toggle

    property string toolTip

    implicitWidth: implicitContentWidth
    implicitHeight: Look.rowHeight
    spacing: text === "" ? 0 : 8
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: text

    onHoveredChanged: Hint.show(toggle, hovered || visualFocus, toolTip)
    onVisualFocusChanged: Hint.show(toggle, hovered || visualFocus, toolTip)

    indicator: Rectangle {
        y: (toggle.height - height) / 2
        width: 36
        height: 20
        radius: 10
        color: toggle.checked ? Look.kestrinAccentBlue : Look.fieldColor
        border.width: toggle.checked ? 0 : 1
        border.color: Look.fieldFrameColor

        Rectangle {
            x: 3 + toggle.visualPosition * 16
            y: 3
            width: 14
            height: 14
            radius: 7
            color: toggle.checked ? Look.inverseTextColor : Look.knobColor

            Behavior on x {
                enabled: !toggle.pressed && toggle.visible
                NumberAnimation {
                    duration: Look.moveDuration
                }
            }
        }
    }
    contentItem: PlainLabel {
        leftPadding: 36 + toggle.spacing
        text: toggle.text
        verticalAlignment: Text.AlignVCenter
    }
}
