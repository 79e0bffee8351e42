import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt.dialogs
import zvt.look
import zvt.rows

// The base of all dialogs: modal, centred in the window and never larger than it. Only its buttons and Esc, which
// rejects it, close it. By default it shows `text` and one button, which accepts it; other dialogs set a content and
// buttons of their own. A content that does not fit scrolls, also by the arrow keys. When the dialog closes, the
// keyboard focus returns to the item that had it before.
T.Dialog {
    id: dialog

    property string text
    //: Closes a dialog
    property string buttonText: qsTr("Close")
    // Whether the default button is the main action of the dialog.
    property bool primary
    // Buttons that replace the default button.
    property alias buttons: buttonRow.data
    property Item initialFocus: closeButton
    property bool closesByEscape: true
    property int fullWidth: 440

    // The item that had the keyboard focus when the dialog opened.
    property Item _opener
    property bool _openedByKeyboard

    function _scrollBy(distance: real) {
        if (contentItem instanceof DialogScroller)
            contentItem.scrollBy(distance)
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(fullWidth, parent.width - 32) : fullWidth
    height: parent ? Math.min(implicitHeight, parent.height - 32) : implicitHeight
    implicitHeight: contentHeight + topPadding + bottomPadding + implicitHeaderHeight + implicitFooterHeight
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    padding: 16
    font.pixelSize: Look.textSize
    onAboutToShow: {
        _opener = parent.Window.activeFocusItem
        _openedByKeyboard = _opener instanceof T.Control && _opener.visualFocus
        initialFocus.forceActiveFocus(Qt.TabFocusReason)
    }
    // Not in onClosed: another dialog may take the focus while this one is closing.
    onAboutToHide: {
        if (_opener && _opener.visible)
            _opener.forceActiveFocus(_openedByKeyboard ? Qt.TabFocusReason : Qt.OtherFocusReason)
    }

    T.Overlay.modal: Rectangle {
        // If several dialogs are open, only the lowest one dims the page.
        readonly property bool lowest: parent ? Array.from(parent.children).find(item => item.objectName === objectName)
                                                === this : true

        objectName: "dialogShade"
        color: lowest ? Look.shadeColor : "transparent"
    }
    background: Rectangle {
        radius: 4
        color: Look.panelColor
        border.color: Look.fieldFrameColor
    }
    header: PlainLabel {
        visible: text !== ""
        text: dialog.title
        font.weight: Font.DemiBold
        color: Look.strongTextColor
        wrapMode: Text.Wrap
        leftPadding: 16
        rightPadding: 16
        topPadding: 16
    }
    // Without ids, so that Qt does not create it in dialogs that set another content.
    contentItem: DialogScroller {
        PlainLabel {
            Layout.fillWidth: true
            text: dialog.text
            wrapMode: Text.Wrap
        }
    }
    footer: Item {
        implicitHeight: Look.rowHeight + 16

        Keys.onUpPressed: dialog._scrollBy(-Look.rowHeight)
        Keys.onDownPressed: dialog._scrollBy(Look.rowHeight)

        Shortcut {
            sequence: "Escape"
            enabled: dialog.visible && dialog.closesByEscape
            onActivated: dialog.reject()
        }

        Row {
            id: buttonRow

            anchors.right: parent.right
            anchors.rightMargin: 16
            spacing: 8
        }

        DialogButton {
            id: closeButton

            anchors.right: parent.right
            anchors.rightMargin: 16
            visible: buttonRow.children.length === 0
            primary: dialog.primary
            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    }
}
