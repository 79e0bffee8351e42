import QtQuick
import QtQuick.Controls

// Picks one of the colours of the video palette. Entry 0 cannot be picked here: it is transparency.
Popup {
    id: picker

    // The colours as #rrggbb.
    property var colors: []
    property int selectedIndex: -1

    function _pick(index: int) {
        selectedIndex = index
        close()
    }

    parent: Overlay.overlay
    modal: true
    dim: false
    focus: true
    padding: 8
    palette: root.palette
    font.pixelSize: root.textSize
    onOpened: {
        grid.currentIndex = Math.max(1, selectedIndex)
        grid.forceActiveFocus()
    }

    background: Rectangle {
        radius: 4
        color: root.panelColor
        border.color: root.fieldFrameColor
    }

    GridView {
        id: grid

        anchors.fill: parent
        implicitWidth: 32 * cellWidth
        implicitHeight: 8 * cellHeight
        cellWidth: 17
        cellHeight: 17
        interactive: false
        keyNavigationEnabled: true
        // Nothing is built for a picker that nobody has opened.
        model: picker.visible ? picker.colors : []
        Keys.onReturnPressed: picker._pick(Math.max(1, currentIndex))
        Keys.onEnterPressed: picker._pick(Math.max(1, currentIndex))

        delegate: AbstractButton {
            id: swatch

            required property int index
            required property color modelData

            readonly property bool selected: index === picker.selectedIndex
            readonly property bool marked: hovered || GridView.isCurrentItem

            visible: index > 0
            width: 16
            height: 16
            hoverEnabled: true
            focusPolicy: Qt.NoFocus
            onClicked: picker._pick(index)

            //: A colour of the palette, by its number
            Accessible.name: qsTr("Color %1").arg(index)

            contentItem: Label {
                text: swatch.selected ? "\uf00c" : ""
                font.family: fontAwesome.name
                font.pixelSize: 12
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                // Whichever stands out from the colour.
                color: swatch.modelData.hslLightness > 0.5 ? "black" : "white"
            }
            background: Rectangle {
                color: swatch.modelData
                border.width: swatch.marked ? 2 : 0
                border.color: root.strongTextColor
            }
        }
    }
}
