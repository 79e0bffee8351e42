import QtQuick
import QtQuick.Controls
import "../controls"

// A text with one button, which accepts the dialog. It does not go away by itself; Esc closes it without accepting. A
// text that is longer than the window scrolls, by the arrow keys too.
Dialog {
    id: dialog

    property string text
    //: Closes a dialog
    property string buttonText: qsTr("Close")

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(440, (parent?.width ?? 440) - 32)
    height: Math.min(implicitHeight, (parent?.height ?? implicitHeight) - 32)
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    padding: 16
    palette: root.palette
    font.pixelSize: root.textSize
    onAboutToShow: closeButton.forceActiveFocus(Qt.TabFocusReason)

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
        font.pixelSize: root.titleSize
        font.weight: Font.DemiBold
        color: root.strongTextColor
        wrapMode: Text.Wrap
        leftPadding: 16
        rightPadding: 16
        topPadding: 16
    }
    contentItem: ScrollView {
        contentWidth: availableWidth
        ScrollBar.vertical.policy: contentHeight > availableHeight ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

        Label {
            width: parent.width
            rightPadding: 12
            text: dialog.text
            color: root.textColor
            wrapMode: Text.Wrap
        }
    }
    footer: Item {
        implicitHeight: closeButton.implicitHeight + 16

        Keys.onEscapePressed: dialog.reject()
        Keys.onUpPressed: dialog.contentItem.ScrollBar.vertical.decrease()
        Keys.onDownPressed: dialog.contentItem.ScrollBar.vertical.increase()

        WrappingButton {
            id: closeButton

            anchors.right: parent.right
            anchors.rightMargin: 16
            width: Math.max(88, implicitWidth)
            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    }
}
