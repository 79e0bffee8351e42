import QtQuick
import QtQuick.Controls
import "../controls"

// The frame of all dialogs: modal, in the middle of the window, no larger than it, and not going away by itself. Esc
// rejects it. As it stands it shows a text with one button, which accepts it; other dialogs bring a content and buttons
// of their own. A content that is longer than the window scrolls, by the arrow keys too.
Dialog {
    id: dialog

    property string text
    //: Closes a dialog
    property string buttonText: qsTr("Close")
    // In place of the one button.
    property alias buttons: buttonRow.data
    property Item initialFocus: closeButton
    property int fullWidth: 440

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(fullWidth, (parent?.width ?? fullWidth) - 32)
    height: Math.min(implicitHeight, (parent?.height ?? implicitHeight) - 32)
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    padding: 16
    palette: root.palette
    font.pixelSize: root.textSize
    onAboutToShow: initialFocus.forceActiveFocus(Qt.TabFocusReason)

    Overlay.modal: Rectangle {
        color: root.shadeColor
    }
    background: Rectangle {
        radius: 4
        color: root.panelColor
        border.color: root.fieldFrameColor
    }
    header: Label {
        visible: text !== ""
        text: dialog.title
        textFormat: Text.PlainText
        font.pixelSize: root.titleSize
        font.weight: Font.DemiBold
        color: root.strongTextColor
        wrapMode: Text.Wrap
        leftPadding: 16
        rightPadding: 16
        topPadding: 16
    }
    // Without ids, so that it is not made where another content takes its place.
    contentItem: ScrollView {
        contentWidth: availableWidth
        // The view does not notice by itself that a text wraps.
        contentHeight: contentChildren[0].implicitHeight
        ScrollBar.vertical.policy: contentHeight > availableHeight ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

        Label {
            width: parent.width
            rightPadding: 12
            text: dialog.text
            // Names of states and files are part of some texts.
            textFormat: Text.PlainText
            color: root.textColor
            wrapMode: Text.Wrap
        }
    }
    footer: Item {
        implicitHeight: root.rowHeight + 16

        Keys.onUpPressed: dialog.contentItem.ScrollBar.vertical?.decrease()
        Keys.onDownPressed: dialog.contentItem.ScrollBar.vertical?.increase()

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

        WrappingButton {
            id: closeButton

            anchors.right: parent.right
            anchors.rightMargin: 16
            visible: buttonRow.children.length === 0
            width: Math.max(88, implicitWidth)
            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    }
}
