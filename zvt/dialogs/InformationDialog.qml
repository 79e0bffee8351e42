import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt.dialogs
import zvt.look
import zvt.rows

// The frame of all dialogs: modal, in the middle of the window, no larger than it, and closed only by its buttons and by
// Esc, which rejects it. By default it shows a text with one button, which accepts it; other dialogs have a content and
// buttons of their own. A content that is longer than the window scrolls, by the arrow keys too. Once the dialog closes, the
// keyboard focus is where it was before.
T.Dialog {
    id: dialog

    property string text
    //: Closes a dialog
    property string buttonText: qsTr("Close")
    // Whether the one button is the main action of the dialog.
    property bool primary
    // In place of the one button.
    property alias buttons: buttonRow.data
    property Item initialFocus: closeButton
    property int fullWidth: 440

    // What had the keyboard focus when the dialog opened.
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
    // Not later: another dialog may have the focus before a fading one has gone.
    onAboutToHide: {
        if (_opener && _opener.visible)
            _opener.forceActiveFocus(_openedByKeyboard ? Qt.TabFocusReason : Qt.OtherFocusReason)
    }

    T.Overlay.modal: Rectangle {
        // Of several open dialogs only the lowest one darkens what is below it.
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
    // Without ids, so that it is not made where another content takes its place.
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
            enabled: dialog.visible
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
