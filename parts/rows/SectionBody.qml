import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// The body of a section: one or two groups of rows. A section makes it by its file and hands it what it needs.
Columns {
    required property ZvtCameraModel camera
    required property bool connected
    // Whether the page is on show.
    required property bool isShown

    // Whether a control is held that would be lost if the page scrolled.
    property bool holding

    // An item that is to be seen.
    signal seek(item: Item)

    // The section is read again, so that the reason of a warning may be gone.
    function clearWarnings() {
    }
}
