import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// A section of a page: a header, and below it a body that is visible while the section is expanded. A click on the
// header emits `toggle`; if the section is collapsed, it emits `refresh` first. The body is created when it is first
// visible. If `preload` is set, the body of an expanded section is created asynchronously while the page is hidden. A
// body is kept when the section collapses.
ColumnLayout {
    id: section

    required property string title
    // File whose root item is a SectionBody.
    required property url body
    required property ZvtCameraModel camera
    required property bool connected
    // Whether the page is visible.
    required property bool isShown
    // Whether the body may be created while the page is hidden.
    required property bool preload
    property bool expanded
    property bool loading
    // Whether the body's values have been read and can be set.
    property bool usable: true

    // Whether the operator holds down a control of the body. The page must not scroll meanwhile.
    readonly property bool controlHeld: _body ? _body.controlHeld : false
    readonly property SectionBody _body: contents.item as SectionBody

    // Asks the page to read the models of the section.
    signal refresh
    // Asks the page to expand or to collapse the section.
    signal toggle
    // Asks the page to scroll the item into view.
    signal scrollTo(item: Item)

    function clearWarnings() {
        if (_body)
            _body.clearWarnings()
    }

    spacing: 0
    Layout.fillWidth: true

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

        readonly property bool _wanted: section.expanded && (section.isShown || section.preload)
        readonly property bool _wantedNow: section.expanded && section.isShown

        // If the page is shown while the body is still loading asynchronously, the body is loaded again, synchronously.
        // The first load is ended before that: if only `asynchronous` changed, the loader would complete it without the
        // initial properties.
        function _make() {
            const hidden = !section.isShown
            if (!_wanted || status === Loader.Ready || (status === Loader.Loading && hidden))
                return
            if (status === Loader.Loading)
                source = ""
            asynchronous = hidden
            setSource(section.body, {
                camera: Qt.binding(() => section.camera),
                connected: Qt.binding(() => section.connected),
                isShown: Qt.binding(() => section.isShown)
            })
        }

        visible: section.expanded
        enabled: section.connected && (section.usable || (section._body ? section._body.beingEdited : false))
        Layout.fillWidth: true
        Layout.margins: Look.margin
        on_WantedNowChanged: _make()
        on_WantedChanged: _make()
        Component.onCompleted: _make()
    }

    Connections {
        target: section._body
        function onScrollTo(item: Item) {
            section.scrollTo(item)
        }
    }
}
