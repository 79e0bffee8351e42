import QtQuick
import QtQuick.Controls

// A button whose text wraps and then shrinks instead of being cut off. Enter presses it, like the space bar.
Button {
    id: button

    property string toolTip
    property bool destructive
    property color textColor: destructive ? "black" : root.textColor

    implicitHeight: root.rowHeight
    padding: 2
    leftPadding: 10
    rightPadding: 10

    // A palette of their own would cost all buttons when the page is made, and few need one.
    onDestructiveChanged: palette.button = destructive ? root.tidepoolAccentDestructiveButtonBackground
                                                       : root.buttonColor

    Accessible.name: text !== "" && font.family !== fontAwesome.name ? text : toolTip

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.textColor
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
