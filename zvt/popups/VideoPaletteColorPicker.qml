import QtQuick
import QtQuick.Templates as T
import zvt.look

// Picks a colour of the video palette. Entry 0 is hidden, because it is transparent. A click, Enter or the space bar
// picks the colour and closes the picker. Esc and a click outside only close it. The keyboard focus then returns to the
// button that opened the picker.
T.Popup {
    id: picker

    // The colours as #rrggbb.
    property var colors: []
    property int selectedIndex: -1

    property Item _opener
    property bool _openedByKeyboard

    // Opens the picker at a button, inside the window: below the button, or above it if there is only room above, with
    // the same right end. Without room for either, it covers the button.
    function openAt(button: Item, index: int) {
        const place = button.mapToItem(parent, 0, 0)
        const below = place.y + button.height + 2
        const above = place.y - height - 2
        x = Math.max(0, place.x + button.width - width)
        const lowest = parent.height - height
        y = below <= lowest ? below : above >= 0 ? above : Math.max(0, lowest)
        selectedIndex = index
        _opener = button
        _openedByKeyboard = button instanceof T.Control && button.visualFocus
        open()
    }

    function _pick(index: int) {
        selectedIndex = index
        close()
    }

    function _pickCurrent() {
        if (grid.currentIndex > 0)
            _pick(grid.currentIndex)
    }

    parent: T.Overlay.overlay
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    modal: true
    dim: false
    focus: true
    padding: 8
    font.pixelSize: Look.textSize
    onOpened: {
        grid.currentIndex = Math.max(1, selectedIndex)
        grid.forceActiveFocus()
    }

    onAboutToHide: {
        if (_opener && _opener.visible)
            _opener.forceActiveFocus(_openedByKeyboard ? Qt.TabFocusReason : Qt.OtherFocusReason)
    }

    background: Rectangle {
        radius: 4
        color: Look.panelColor
        border.color: Look.fieldFrameColor
    }
    contentItem: GridView {
        id: grid

        implicitWidth: 32 * cellWidth
        implicitHeight: 8 * cellHeight
        cellWidth: 17
        cellHeight: 17
        interactive: false
        keyNavigationEnabled: true
        // The swatches exist only while the picker is open. A list of the colours themselves would create them again,
        // and move the current one, when a read changes the colours.
        model: picker.visible ? picker.colors.length : 0
        // No key leads to entry 0.
        onCurrentIndexChanged: {
            if (currentIndex < 1 && count > 1)
                currentIndex = 1
        }
        Keys.onReturnPressed: picker._pickCurrent()
        Keys.onEnterPressed: picker._pickCurrent()
        Keys.onSpacePressed: picker._pickCurrent()

        delegate: T.AbstractButton {
            id: swatch

            required property int index

            // While the list becomes shorter, the colour may be missing.
            readonly property color shade: picker.colors[index] ?? Look.fieldColor
            readonly property bool selected: index === picker.selectedIndex
            readonly property bool marked: hovered || GridView.isCurrentItem
            readonly property real luminance: 0.2126 * Math.pow(shade.r, 2.2) + 0.7152 * Math.pow(shade.g, 2.2)
                                              + 0.0722 * Math.pow(shade.b, 2.2)
            // Black or white, whichever has the better contrast with the colour.
            readonly property color markColor: luminance > 0.18 ? Look.inverseTextColor : Look.strongTextColor

            visible: index > 0
            width: 16
            height: 16
            focusPolicy: Qt.NoFocus
            onClicked: picker._pick(index)

            //: A colour of the palette, by its number
            Accessible.name: qsTr("Color %1").arg(index)

            contentItem: GlyphLabel {
                text: swatch.selected ? Glyph.apply : ""
                color: swatch.markColor
            }
            background: Rectangle {
                color: swatch.shade
                border.width: swatch.marked ? 2 : 0
                border.color: swatch.markColor
            }
        }
    }
}
