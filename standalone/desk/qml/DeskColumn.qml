import QtQuick
import QtQuick.Controls
import zvt.controller.desk

// The desk: a column of cards beside the page.
FocusScope {
    id: column

    required property Desk desk

    readonly property Item _focusItem: Window.activeFocusItem

    // The user wants to go back to the page.
    signal exited()

    // Scrolls so that `item` is visible if it is on a card and has got the focus by keyboard. Nothing moves under the
    // pointer.
    function _reveal(item: var) {
        const reason = item ? item.focusReason : Qt.OtherFocusReason
        let ancestor = reason === Qt.TabFocusReason || reason === Qt.BacktabFocusReason ? item : null
        while (ancestor && ancestor !== cards)
            ancestor = ancestor.parent
        if (!ancestor)
            return
        const top = item.mapToItem(cards, 0, 0).y - DeskLook.spacing
        const bottom = top + item.height + 2 * DeskLook.spacing
        if (top < flickable.contentY)
            flickable.contentY = Math.max(0, top)
        else if (bottom > flickable.contentY + flickable.height)
            flickable.contentY = bottom - flickable.height
    }

    on_FocusItemChanged: _reveal(_focusItem)

    Keys.onEscapePressed: exited()

    palette {
        window: DeskLook.cardColor
        windowText: DeskLook.textColor
        base: DeskLook.fieldColor
        alternateBase: DeskLook.cardColor
        text: DeskLook.strongTextColor
        button: DeskLook.buttonColor
        buttonText: DeskLook.textColor
        brightText: DeskLook.strongTextColor
        highlight: DeskLook.accentColor
        highlightedText: "#000000"
        placeholderText: DeskLook.dimTextColor
        mid: "#3a3a45"
        dark: "#0c0c10"
        light: "#3a3a45"
        shadow: "#000000"
        disabled {
            windowText: DeskLook.disabledTextColor
            text: DeskLook.disabledTextColor
            buttonText: DeskLook.disabledTextColor
        }
    }

    Rectangle {
        anchors.fill: parent
        color: DeskLook.backColor
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        anchors.margins: DeskLook.spacing
        anchors.rightMargin: 0
        contentWidth: width
        contentHeight: cards.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        ScrollBar.vertical: ScrollBar { }

        Column {
            id: cards

            width: flickable.width - 12
            spacing: DeskLook.spacing

            // The cards, in the order of the models in Desk.
            PictureCard {
                settings: column.desk.settings
                model: column.desk.picture
                isInView: y < flickable.contentY + flickable.height && y + height > flickable.contentY
            }
            LineCard {
                settings: column.desk.settings
                model: column.desk.line
            }
            WorldCard {
                settings: column.desk.settings
                model: column.desk.world
            }
            OtherClientCard {
                settings: column.desk.settings
                model: column.desk.otherClient
            }
            CallsCard {
                settings: column.desk.settings
                model: column.desk.calls
            }
        }
    }
}
