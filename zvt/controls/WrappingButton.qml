import QtQuick
import QtQuick.Templates as T
import zvt.look

// A button whose text wraps and then shrinks instead of being cut off. Enter clicks it, like the space bar.
T.Button {
    id: button

    property string toolTip
    // Whether this is the main action of a dialog or form.
    property bool primary
    property bool destructive
    // Black text on a dimmed bright colour is unreadable, so a disabled button does not show its role.
    readonly property bool _loud: enabled && (primary || destructive)
    property color textColor: _loud ? Look.inverseTextColor : Look.textColor

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Look.rowHeight
    padding: 2
    leftPadding: 10
    rightPadding: 10
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: text !== "" ? text : toolTip

    onHoveredChanged: Hint.show(button, hovered || visualFocus, toolTip)
    onVisualFocusChanged: Hint.show(button, hovered || visualFocus, toolTip)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: PlainLabel {
        text: button.text
        color: button.textColor
        font.weight: button._loud ? Font.DemiBold : button.font.weight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        fontSizeMode: width > 0 && implicitWidth > width ? Text.Fit : Text.FixedSize
        minimumPixelSize: 8
    }
    background: Rectangle {
        radius: Look.controlRadius
        color: button._loud ? (button.destructive ? Look.tidepoolAccentDestructiveButtonBackground : Look.kestrinAccentBlue)
                            : button.down ? Look.buttonDownColor
                                          : button.hovered ? Look.buttonHoverColor : Look.buttonColor
        border.width: button._loud ? 0 : 1
        border.color: Look.buttonFrameColor
    }
}
