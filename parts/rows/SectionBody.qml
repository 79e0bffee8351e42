import QtQuick
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0

// The body of a section: one or two groups of rows. The section creates it from its file and sets the required
// properties.
Columns {
    id: body

    required property ZvtCameraModel camera
    required property bool connected
    // Whether the page is visible.
    required property bool isShown

    // Whether the operator holds a control that would move away from the pointer if the page scrolled.
    property bool controlHeld
    // Whether a text field of the body has the focus or a list of the body is open. The section then stays enabled
    // during a read.
    readonly property bool beingEdited: _isBeingEdited(Window.activeFocusItem)

    // Asks the page to scroll the item into view.
    signal scrollTo(item: Item)

    // Removes warnings. The section calls this when it is read again, because their reason may have ended.
    function clearWarnings() {
    }

    // Reads values that are not in a model. The section calls this when it is read again.
    function readAgain() {
    }

    // Whether the item is in the body.
    function includes(item: Item): bool {
        let ancestor = item
        while (ancestor && ancestor !== body)
            ancestor = ancestor.parent
        return ancestor !== null
    }

    function _isBeingEdited(item: Item): bool {
        const list = item as T.ComboBox
        return includes(item instanceof T.TextField || (list && list.down) ? item : null)
    }
}
