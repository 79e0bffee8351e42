import QtQuick
import QtQuick.Controls
import "../controls"

// A message to be read and dismissed.
Dialog {
    id: dialog

    property string text

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(360, (parent?.width ?? 360) - 32)
    modal: true
    focus: true
    padding: 16
    //: Title of a message; the name of the program
    title: qsTr("KESTRIN Quarry Desk")
    palette: root.palette
    font.pixelSize: root.textSize

    onAboutToShow: okButton.forceActiveFocus(Qt.TabFocusReason)

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 150
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            from: 1
            to: 0
            duration: 150
        }
    }
    Overlay.modal: Rectangle {
        color: root.shadeColor
    }
    background: Rectangle {
        radius: 4
        color: root.panelColor
        border.color: root.fieldFrameColor
    }
    header: Label {
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
        implicitHeight: okButton.implicitHeight + 16

        WrappingButton {
            id: okButton

            anchors.right: parent.right
            anchors.rightMargin: 16
            implicitWidth: 88
            //: Dismisses a message
            text: qsTr("OK")
            onClicked: dialog.accept()
        }
    }
}
