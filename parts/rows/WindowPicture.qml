import QtQuick
import com.kestrin.hlxcamui 1.0

// Shows a window on a picture of the detector, and edits it by mouse and keyboard.
WindowEditor {
    id: editor

    // With the mouse as reason, the page does not scroll the editor while the operator drags in it.
    readonly property int focusReason: hover.hovered ? Qt.MouseFocusReason : Qt.TabFocusReason

    HoverHandler {
        id: hover
    }
}
