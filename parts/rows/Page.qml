import QtQuick
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// A tab's page: a column of sections that scrolls and keeps the item with keyboard focus visible. Shows a banner while
// no camera is connected. Emits `refresh` each time it is shown or the camera connects, and `rest` each time it is
// hidden or the camera disconnects.
Flickable {
    id: page

    required property ZvtCameraModel camera
    required property var tabModel
    required property bool selected
    required property bool connected
    // Whether contents may be created while the page is hidden.
    required property bool preload

    readonly property bool isShown: visible && (Window.window ? Window.window.visible : false)
    default property alias contents: sections.data
    readonly property real _bannerHeight: Look.rowHeight

    // A change of the tab emits them twice: for `isShown` and for `selected`. The models drop the second read while the
    // first runs.
    signal refresh
    signal rest

    // Scrolls so that `item` is visible. Does nothing if the item got the focus by mouse, so that nothing moves under
    // the pointer.
    function bringIntoView(item: var) {
        let ancestor = item && item.visible ? item : null
        while (ancestor && ancestor !== sections)
            ancestor = ancestor.parent
        if (!ancestor || item.focusReason === Qt.MouseFocusReason)
            return
        const top = item.mapToItem(contentItem, 0, 0).y - Look.rowSpacing
        const bottom = top + item.height + 2 * Look.rowSpacing
        contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)))
    }

    function _attach(bar: T.ScrollBar) {
        T.ScrollBar.vertical = bar
    }

    // Takes the keyboard focus, unless the operator is moving over the tabs by keyboard or uses a popup.
    function takeFocus() {
        const holder = Window.activeFocusItem
        if (!(holder instanceof T.TabButton && holder.visualFocus) && !_isInPopup(holder))
            forceActiveFocus()
    }

    function _isInPopup(item: Item): bool {
        let ancestor = item
        while (ancestor && ancestor !== T.Overlay.overlay)
            ancestor = ancestor.parent
        return ancestor !== null
    }

    function _refreshOrRest(active: bool) {
        if (active)
            refresh()
        else
            rest()
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    contentHeight: sections.y + sections.implicitHeight + Look.margin
    Window.onActiveFocusItemChanged: bringIntoView(Window.activeFocusItem)
    onIsShownChanged: {
        _refreshOrRest(isShown && connected)
        if (isShown && connected)
            takeFocus()
    }
    onSelectedChanged: _refreshOrRest(selected && isShown && connected)
    onConnectedChanged: _refreshOrRest(connected && isShown)

    // A layout would cost an object for each section.
    Column {
        id: sections

        readonly property real _available: page.width - 2 * Look.margin

        x: (page.width - width) / 2
        y: Look.margin + (page.connected ? 0 : page._bannerHeight + spacing)
        width: Math.min(_available, _available < 1216 ? 960 : 1920)
        spacing: 6
    }

    // What surrounds the sections. It is created when the page is first visible.
    Loader {
        active: page.visible || status === Loader.Ready
        sourceComponent: Item {
            Component.onCompleted: page._attach(scrollBar)

            NoCameraConnectedRectangle {
                parent: page.contentItem
                visible: !page.connected
                x: sections.x
                y: Look.margin
                width: sections.width
                height: page._bannerHeight
            }

            SlimScrollBar {
                id: scrollBar

                parent: page
            }

            // A line that shows that there is more content above.
            Rectangle {
                parent: page
                visible: page.contentY > 0
                width: page.width
                height: 1
                color: Look.rectangleOutlineColor
            }
        }
    }
}
