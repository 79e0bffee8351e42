import QtQuick
import com.kestrin.hlxcamui.templates 6.4 as T

// An image window on its pixel array, moved and sized by mouse and arrow keys.
T.WindowEditor {
    id: editor

    readonly property color _lineColor: !enabled ? palette.mid : activeFocus ? palette.highlight : palette.windowText

    implicitWidth: 160
    implicitHeight: 128

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Image Window")
    Accessible.description: qsTr("%1 by %2 at %3, %4").arg(window.width).arg(window.height).arg(window.x).arg(window.y)
    Accessible.focusable: true

    // On whole units, so that lines are sharp.
    component Frame: Rectangle {
        property rect frame

        x: Math.round(frame.x)
        y: Math.round(frame.y)
        width: Math.round(frame.right) - x
        height: Math.round(frame.bottom) - y
    }

    // The array; its frame tells the focus.
    Frame {
        frame: Qt.rect(editor.arrayFrame.x - 2, editor.arrayFrame.y - 2,
                       editor.arrayFrame.width + 4, editor.arrayFrame.height + 4)
        visible: editor.arrayFrame.width > 0
        color: editor.palette.base
        border.width: editor.activeFocus ? 2 : 1
        border.color: editor.activeFocus ? editor.palette.highlight : editor.palette.mid
        radius: 2
    }

    // The part of the array that the window may lie in.
    Frame {
        frame: editor.areaFrame
        visible: editor.isSubWindow
        color: editor.palette.alternateBase
        border.color: editor.palette.mid
    }

    Frame {
        id: shown

        readonly property real _edge: 6

        frame: editor.windowFrame
        visible: editor.window.width > 0 && editor.window.height > 0
        color: Qt.alpha(editor._lineColor, 0.15)
        border.width: 1
        border.color: editor._lineColor

        Text {
            anchors.centerIn: parent
            visible: implicitWidth + 2 * shown._edge < parent.width && implicitHeight + 4 < parent.height
            text: "%1 × %2".arg(editor.window.width).arg(editor.window.height)
            color: editor.palette.windowText
            font.pixelSize: 12
        }

        // The corners, as the places to take hold of.
        Repeater {
            model: 4

            Rectangle {
                required property int index

                x: (index % 2 === 0 ? 0 : shown.width) - width / 2
                y: (index < 2 ? 0 : shown.height) - height / 2
                width: shown._edge
                height: shown._edge
                visible: editor.enabled
                color: editor._lineColor
            }
        }
    }
}
