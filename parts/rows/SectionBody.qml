import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// The body of a section: one or two groups of rows. The section creates it from its file and sets the required
// properties.
Columns {
    required property ZvtCameraModel camera
    required property bool connected
    // Whether the page is visible.
    required property bool isShown

    // Whether the operator holds a control that would move away from the pointer if the page scrolled.
    property bool controlHeld

    // Asks the page to scroll the item into view.
    signal scrollTo(item: Item)

    // Removes warnings. The section calls this when it is read again, because their reason may have ended.
    function clearWarnings() {
    }
}
