import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// A section of a page: a header, and below it a body that is visible while the section is expanded. A click on the
// header emits `toggle`; if the section is collapsed, it emits `refresh` first.
Item {
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
    // The body, for pages that listen to its own signals; null before it is created.
    readonly property alias bodyItem: contents.item
    readonly property SectionBody _body: contents.sectionBody

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

    onRefresh: {
        if (_body)
            _body.readAgain()
    }
    width: parent ? parent.width : 0
    implicitHeight: header.height + (expanded ? contents.height + 2 * Look.margin : 0)

    SectionSwitchableHeaderButton {
        id: header

        width: section.width
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

    BodyLoader {
        id: contents

        x: Look.margin
        y: header.height + Look.margin
        width: section.width - 2 * Look.margin
        body: section.body
        camera: section.camera
        connected: section.connected
        isShown: section.isShown
        preload: section.preload
        expanded: section.expanded
        usable: section.usable
        onLoaded: sectionBody.scrollTo.connect(section.scrollTo)
    }
}
