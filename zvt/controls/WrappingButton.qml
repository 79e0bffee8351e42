import QtQuick
import QtQuick.Controls

// A button whose text wraps and then shrinks instead of being cut off. Enter presses it, like the space bar.
Button {
    id: button

    property string toolTip
    property bool destructive

    implicitHeight: root.rowHeight
    padding: 2
    leftPadding: 10
    rightPadding: 10
    palette.button: destructive ? root.tidepoolAccentDestructiveButtonBackground : root.buttonColor
    palette.buttonText: destructive ? "black" : root.textColor

    Accessible.name: text !== "" && font.family !== fontAwesome.name ? text : toolTip

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.palette.buttonText
        opacity: button.enabled ? 1 : 0.6
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        fontSizeMode: Text.Fit
        minimumPixelSize: 8
    }

    ToolTip {
        visible: button.toolTip !== "" && (button.hovered || button.visualFocus)
        delay: 600
        text: button.toolTip
        palette: root.palette
        font.pixelSize: root.hintSize
    }
}
