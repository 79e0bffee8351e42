import QtQuick
import QtQuick.Templates as T
import zvt.controller.desk

// A card of the desk: a header that opens and closes it, and its body. The body is created when the card is first open.
// Whether it is open is kept in the settings.
Rectangle {
    id: card

    required property DeskSettings settings
    // The key of the card in the settings.
    required property string name
    required property string title
    // Whether the card is open before the user has ever opened or closed it.
    property bool opensFirst: false
    // Whether a part of the card is in the visible part of its column.
    property bool isInView: true
    // The content: an item that has the width of its parent and a height of its own.
    property Component body
    readonly property bool isOpen: _isOpen
    // Whether the content is visible. Models work only then.
    readonly property bool isShown: _isOpen && visible

    property bool _isOpen: false

    function toggle() {
        _isOpen = !_isOpen
        settings.setOpen(name, _isOpen)
    }

    Component.onCompleted: _isOpen = settings.isOpen(name, opensFirst)

    width: parent ? parent.width : 0
    height: header.height + (_isOpen ? content.height + 2 * DeskLook.margin : 0)
    color: DeskLook.cardColor
    border.color: DeskLook.frameColor
    radius: 4

    T.Button {
        id: header

        objectName: "cardHeader"
        width: parent.width
        height: DeskLook.rowHeight + 4
        text: card.title
        checkable: true
        checked: card.isOpen
        focusPolicy: Qt.TabFocus
        onToggled: card.toggle()

        Accessible.name: text
        Accessible.description: card.isOpen ? qsTr("Closes the card") : qsTr("Opens the card")

        background: Rectangle {
            radius: 4
            color: header.hovered ? DeskLook.headerHoverColor : DeskLook.headerColor
            border.width: header.visualFocus ? 2 : 0
            border.color: DeskLook.accentColor
        }
        contentItem: Item {
            Text {
                anchors.verticalCenter: parent.verticalCenter
                x: DeskLook.margin
                width: 14
                text: card.isOpen ? "\u25be" : "\u25b8"
                color: DeskLook.dimTextColor
                font.pixelSize: DeskLook.textSize
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                x: DeskLook.margin + 18
                width: parent.width - x - DeskLook.margin
                text: header.text
                elide: Text.ElideRight
                color: DeskLook.strongTextColor
                font.pixelSize: DeskLook.textSize
                font.weight: Font.DemiBold
            }
        }
    }

    Loader {
        id: content

        property bool _wasOpen: false

        x: DeskLook.margin
        y: header.height + DeskLook.margin
        width: card.width - 2 * DeskLook.margin
        visible: card.isOpen
        active: card.isOpen || _wasOpen
        sourceComponent: card.body
        onLoaded: _wasOpen = true
    }
}
