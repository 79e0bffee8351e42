import QtQuick
import QtQuick.Templates as T

// A button of the camera finder. Enter clicks it, like the space bar.
T.Button {
    id: button

    // Whether this is the main action of the dialog.
    property bool primary

    readonly property color _plainColor: down ? FinderLook.buttonDownColor
                                              : hovered ? FinderLook.buttonHoverColor : FinderLook.buttonColor

    implicitWidth: Math.max(88, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: FinderLook.rowHeight
    leftPadding: 10
    rightPadding: 10
    opacity: enabled ? 1 : 0.6

    Accessible.name: text

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: 3
        color: button.primary ? FinderLook.accentColor : button._plainColor
        border.width: button.primary ? 0 : 1
        border.color: FinderLook.buttonFrameColor

        FocusRing {
            visible: button.visualFocus
        }
    }
    contentItem: Text {
        text: button.text
        color: button.primary ? FinderLook.inverseTextColor : FinderLook.textColor
        font.pixelSize: FinderLook.textSize
        font.weight: button.primary ? Font.DemiBold : Font.Normal
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
