import QtQuick
import QtQuick.Templates as T

// The handle between page and desk: a click shows or hides the desk, a drag changes its width.
T.AbstractButton {
    id: handle

    // Whether the desk is shown.
    property bool shown: false
    // The parent of all popups of the window.
    readonly property Item overlay: T.Overlay.overlay

    // The user drags the handle; `x` is the pointer's place in the window.
    signal dragged(x: double)
    // A drag has ended.
    signal dropped()
    // The desk becomes wider by so many pixels.
    signal stepped(pixels: int)

    //: Tool tip and accessible name of the handle between page and desk.
    text: shown ? qsTr("Hide the desk (F12)") : qsTr("Show the desk (F12)")
    // A click leaves the focus where it is.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onLeftPressed: stepped(20)
    Keys.onRightPressed: stepped(-20)

    Accessible.name: text

    background: Rectangle {
        color: handle.down || drag.active ? DeskLook.headerColor
                                          : handle.hovered ? DeskLook.headerHoverColor : DeskLook.cardColor
        border.width: handle.visualFocus ? 2 : 0
        border.color: DeskLook.accentColor
    }
    contentItem: Item {
        Text {
            anchors.centerIn: parent
            text: handle.shown ? "\u25b8" : "\u25c2"
            color: handle.hovered || handle.visualFocus ? DeskLook.strongTextColor : DeskLook.dimTextColor
            font.pixelSize: DeskLook.textSize
        }
    }

    HoverHandler {
        cursorShape: handle.shown ? Qt.SplitHCursor : Qt.PointingHandCursor
    }

    DragHandler {
        id: drag

        target: null
        xAxis.enabled: handle.shown
        yAxis.enabled: false
        onCentroidChanged: {
            if (active)
                handle.dragged(centroid.scenePosition.x)
        }
        onActiveChanged: {
            if (!active)
                handle.dropped()
        }
    }

    Loader {
        anchors.right: parent.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        active: handle.hovered && !handle.down && !drag.active
        z: 1
        sourceComponent: Rectangle {
            width: hint.implicitWidth + 2 * DeskLook.spacing
            height: hint.implicitHeight + DeskLook.spacing
            radius: 4
            color: DeskLook.buttonColor
            border.color: DeskLook.frameColor

            Text {
                id: hint

                anchors.centerIn: parent
                text: handle.text
                color: DeskLook.textColor
                font.pixelSize: DeskLook.hintSize
            }
        }
    }
}
