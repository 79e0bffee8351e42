import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Shows the position of the lens and edits it. The lens is locked while the operator types.
RangeLine {
    id: line

    required property ZvtCameraModel camera
    required property bool connected
    required property bool unlocked
    required property bool isShown

    //: Tool tip of a position
    toolTip: qsTr("Click to enter a position")
    usable: unlocked
    mayEdit: visible && isShown && connected
    onEditingChanged: {
        if (camera)
            camera.setupTabModel.lensBasedControlsEnabled = !editing
    }
    // The lens must not stay locked when the page is destroyed.
    Component.onDestruction: editing = false
}
