import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// Creates the body of a section or page when it is first visible, and keeps it. If `preload` is set, a body that is
// wanted is created asynchronously while the page is hidden.
Loader {
    id: loader

    // File whose root item is a SectionBody.
    required property url body
    required property ZvtCameraModel camera
    required property bool connected
    // Whether the page is visible.
    required property bool isShown
    // Whether the body may be created while the page is hidden.
    required property bool preload
    // Whether the section is expanded.
    property bool expanded: true
    // Whether the body's values have been read and can be set.
    property bool usable: true

    readonly property SectionBody sectionBody: item as SectionBody
    readonly property bool _wanted: expanded && (isShown || preload)
    readonly property bool _wantedNow: expanded && isShown

    // If the page is shown while the body is still loading asynchronously, the body is loaded again, synchronously. The
    // first load is ended before that: if only `asynchronous` changed, the loader would complete it without the initial
    // properties.
    function _make() {
        const hidden = !isShown
        if (!_wanted || status === Loader.Ready || (status === Loader.Loading && hidden))
            return
        if (status === Loader.Loading)
            source = ""
        asynchronous = hidden
        setSource(body, {
            camera: Qt.binding(() => loader.camera),
            connected: Qt.binding(() => loader.connected),
            isShown: Qt.binding(() => loader.isShown)
        })
    }

    visible: expanded
    enabled: connected && (usable || (sectionBody ? sectionBody.beingEdited : false))
    on_WantedNowChanged: _make()
    on_WantedChanged: _make()
    Component.onCompleted: _make()
}
