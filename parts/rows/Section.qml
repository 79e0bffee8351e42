import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// A section of a page: its header, and its body while it is expanded. Opening it reads its models first. The body is made
// when it is first seen, or early and beside other work, and is kept; so are the types that it is made of.
ColumnLayout {
    id: section

    required property string title
    // The file of a SectionBody.
    required property url body
    required property ZvtCameraModel camera
    required property bool connected
    // Whether the page is on show, and whether what is not on show may be made.
    required property bool isShown
    required property bool early
    property bool expanded
    property bool loading
    // Whether the body's values have been read and can be set.
    property bool usable: true

    readonly property bool holding: _body ? _body.holding : false
    readonly property SectionBody _body: contents.item as SectionBody
    // The operator types into a field of the body or chooses from a list, which a read must not take away.
    property bool _held

    signal refresh
    signal toggle
    // An item that is to be seen.
    signal seek(item: Item)

    function clearWarnings() {
        if (_body)
            _body.clearWarnings()
    }

    function _updateHeld() {
        const item = Window.activeFocusItem
        let ancestor = item instanceof T.TextField || (item instanceof T.ComboBox && item.down) ? item : null
        while (ancestor && ancestor !== contents)
            ancestor = ancestor.parent
        _held = ancestor !== null
    }

    spacing: 0
    Layout.fillWidth: true
    Window.onActiveFocusItemChanged: _updateHeld()

    Connections {
        target: section.Window.activeFocusItem
        ignoreUnknownSignals: true
        function onDownChanged() {
            section._updateHeld()
        }
    }

    SectionSwitchableHeaderButton {
        Layout.fillWidth: true
        sectionTitle: section.title
        sectionExpanded: section.expanded
        sectionLoading: section.loading
        onClicked: {
            if (!section.expanded)
                section.refresh()
            section.toggle()
        }
        onRefreshSection: section.refresh()
    }

    Loader {
        id: contents

        readonly property bool _due: section.expanded && (section.isShown || section.early)
        readonly property bool _atOnce: section.expanded && section.isShown

        // What is being made early is made at once when the page comes on show. A loader that changes from one to the
        // other by itself would lose the values.
        function _make() {
            const early = !section.isShown
            if (!_due || status === Loader.Ready || (status === Loader.Loading && early))
                return
            asynchronous = early
            setSource(section.body, {
                camera: Qt.binding(() => section.camera),
                connected: Qt.binding(() => section.connected),
                isShown: Qt.binding(() => section.isShown)
            })
        }

        visible: section.expanded
        enabled: section.connected && (section.usable || section._held)
        Layout.fillWidth: true
        Layout.margins: Look.margin
        on_AtOnceChanged: _make()
        on_DueChanged: _make()
        Component.onCompleted: _make()
    }

    Connections {
        target: section._body
        function onSeek(item: Item) {
            section.seek(item)
        }
    }
}
