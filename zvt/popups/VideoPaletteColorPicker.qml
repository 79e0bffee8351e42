import QtQuick
import QtQuick.Templates as T
import zvt.look

// Picks a colour of the video palette. Entry 0 is hidden, because it is transparent.
T.Popup {
    id: picker

    // The colours as #rrggbb.
    property var colors: []
    property int selectedIndex: -1

    function _pick(index: int) {
        selectedIndex = index
        close()
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
        // The swatches exist only while the picker is open.
        model: picker.visible ? picker.colors : []
        Keys.onReturnPressed: picker._pick(Math.max(1, currentIndex))
        Keys.onEnterPressed: picker._pick(Math.max(1, currentIndex))

        delegate: T.AbstractButton {
            id: swatch

            required property int index
            required property color modelData

            readonly property bool selected: index === picker.selectedIndex
            readonly property bool marked: hovered || GridView.isCurrentItem

            visible: index > 0
            width: 16
            height: 16
            focusPolicy: Qt.NoFocus
            onClicked: picker._pick(index)

            //: A colour of the palette, by its number
            Accessible.name: qsTr("Color %1").arg(index)

            contentItem: GlyphLabel {
                text: swatch.selected ? Glyph.apply : ""
                // The colour with the better contrast.
                color: swatch.modelData.hslLightness > 0.5 ? Look.inverseTextColor : Look.strongTextColor
            }
            background: Rectangle {
                color: swatch.modelData
                border.width: swatch.marked ? 2 : 0
                border.color: Look.strongTextColor
            }
        }
    }
}
