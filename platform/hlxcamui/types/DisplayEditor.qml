import QtQuick
import com.kestrin.hlxcamui.templates 6.4 as T

// Draws the image on the raster of the video output. If its position is free, mouse and arrow keys move it.
T.DisplayEditor {
    id: editor

    readonly property bool _movable: enabled && offsetType === T.DisplayEditor.Free
    readonly property color _lineColor: !isValid ? _invalidColor : !_movable ? palette.mid
                                                 : activeFocus ? palette.highlight : palette.windowText
    // A palette has no colour for errors. This one is readable on dark and light backgrounds.
    readonly property color _invalidColor: "#ff5555"

    implicitWidth: 192
    implicitHeight: 152
    clip: true

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Video Output Position")
    Accessible.description: qsTr("Image at %1, %2").arg(offset.x).arg(offset.y)
    Accessible.focusable: true

    // Rounded to whole units, so that lines are sharp.
    component Frame: Rectangle {
        property rect frame

        x: Math.round(frame.x)
        y: Math.round(frame.y)
        width: Math.round(frame.right) - x
        height: Math.round(frame.bottom) - y
    }

    // The raster; the colour of its frame shows the focus.
    Frame {
        frame: editor.displayFrame
        visible: editor.displayFrame.width > 0
        color: editor.palette.base
        border.width: editor.activeFocus ? 2 : 1
        border.color: editor.activeFocus ? editor.palette.highlight : editor.palette.mid
        radius: 2
    }

    // The edge of a strip that a television may cut off.
    component NtscLine: Rectangle {
        required property rect raster
        required property real part

        x: Math.round(raster.x)
        y: Math.round(raster.y + raster.height * part)
        width: Math.round(raster.width)
        height: 1
    }

    NtscLine {
        raster: editor.displayFrame
        part: 0.05
        visible: editor.showNtscLines
        color: editor.palette.mid
    }

    NtscLine {
        raster: editor.displayFrame
        part: 0.95
        visible: editor.showNtscLines
        color: editor.palette.mid
    }

    Frame {
        frame: editor.imageFrame
        visible: editor.imageFrame.width > 0
        color: Qt.alpha(editor._lineColor, 0.15)
        border.width: 1
        border.color: editor._lineColor

        Text {
            anchors.centerIn: parent
            visible: implicitWidth + 12 < parent.width && implicitHeight + 4 < parent.height
            text: editor.isValid ? "%1 × %2".arg(editor.window.width).arg(editor.window.height) : qsTr("Invalid offset")
            color: editor.palette.windowText
            font.pixelSize: 12
        }
    }
}
