import QtQuick
import com.kestrin.hlxcamui.templates 6.4 as T

// Draws an image window on its pixel array. Mouse and arrow keys move and resize it.
T.WindowEditor {
    id: editor

    readonly property color _lineColor: !enabled ? palette.mid : activeFocus ? palette.highlight : palette.windowText

    implicitWidth: 160
    implicitHeight: 128
    // A page may assign a window that is larger than the array.
    clip: true

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Image Window")
    Accessible.description: qsTr("%1 by %2 at %3, %4").arg(window.width).arg(window.height).arg(window.x).arg(window.y)
    Accessible.focusable: true

    // Rounded to whole units, so that lines are sharp.
    component Frame: Rectangle {
        property rect frame

        x: Math.round(frame.x)
        y: Math.round(frame.y)
        width: Math.round(frame.right) - x
        height: Math.round(frame.bottom) - y
    }

    // The array; the colour of its frame shows the focus.
    Frame {
        frame: Qt.rect(editor.arrayFrame.x - 2, editor.arrayFrame.y - 2,
                       editor.arrayFrame.width + 4, editor.arrayFrame.height + 4)
        visible: editor.arrayFrame.width > 0
        color: editor.palette.base
        border.width: editor.activeFocus ? 2 : 1
        border.color: editor.activeFocus ? editor.palette.highlight : editor.palette.mid
        radius: 2
    }

    // The part of the array that may contain the window.
    Frame {
        frame: editor.areaFrame
        visible: editor.isSubWindow
        color: editor.palette.alternateBase
        border.color: editor.palette.mid
    }

    // A handle at a corner or edge of the window.
    component Corner: Rectangle {
        required property Rectangle owner

        width: 6
        height: 6
        visible: owner.enabled
        color: owner.border.color
    }

    Frame {
        id: windowItem

        frame: editor.windowFrame
        visible: editor.window.width > 0 && editor.window.height > 0
        color: Qt.alpha(editor._lineColor, 0.15)
        border.width: 1
        border.color: editor._lineColor

        Text {
            anchors.centerIn: parent
            visible: implicitWidth + 12 < parent.width && implicitHeight + 4 < parent.height
            text: "%1 × %2".arg(editor.window.width).arg(editor.window.height)
            color: editor.palette.windowText
            font.pixelSize: 12
        }

        Corner { owner: windowItem; anchors { horizontalCenter: parent.left; verticalCenter: parent.top } }
        Corner { owner: windowItem; anchors { horizontalCenter: parent.right; verticalCenter: parent.top } }
        Corner { owner: windowItem; anchors { horizontalCenter: parent.left; verticalCenter: parent.bottom } }
        Corner { owner: windowItem; anchors { horizontalCenter: parent.right; verticalCenter: parent.bottom } }
    }
}
