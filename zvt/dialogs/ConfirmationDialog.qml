import QtQuick
import QtQuick.Controls
import "../controls"

// A question. The confirming button accepts the dialog; the denying one and Esc reject it. It does not go away by
// itself.
Dialog {
    id: dialog

    property string text
    //: Answer to a question
    property string confirmButtonText: qsTr("Yes")
    //: Answer to a question
    property string denyButtonText: qsTr("No")
    // What is confirmed cannot be undone.
    property bool destructive

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(400, (parent?.width ?? 400) - 32)
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    padding: 16
    palette: root.palette
    font.pixelSize: root.textSize
    // Whoever presses Enter without reading does no harm.
    onAboutToShow: (destructive ? denyButton : confirmButton).forceActiveFocus(Qt.TabFocusReason)

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
    contentItem: Label {
        text: dialog.text
        color: root.textColor
        wrapMode: Text.Wrap
    }
    footer: Item {
        implicitHeight: buttons.implicitHeight + 16

        Keys.onEscapePressed: dialog.reject()

        Row {
            id: buttons

            anchors.right: parent.right
            anchors.rightMargin: 16
            spacing: 8

            WrappingButton {
                id: confirmButton

                width: Math.max(88, implicitWidth)
                text: dialog.confirmButtonText
                destructive: dialog.destructive
                onClicked: dialog.accept()
            }

            WrappingButton {
                id: denyButton

                width: Math.max(88, implicitWidth)
                text: dialog.denyButtonText
                onClicked: dialog.reject()
            }
        }
    }
}
