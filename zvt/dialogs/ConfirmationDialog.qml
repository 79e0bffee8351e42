import QtQuick
import "../controls"

// A question. The confirming button accepts the dialog; the denying one and Esc reject it.
InformationDialog {
    id: dialog

    //: Answer to a question
    property string confirmButtonText: qsTr("Yes")
    //: Answer to a question
    property string denyButtonText: qsTr("No")
    // What is confirmed cannot be undone.
    property bool destructive

    fullWidth: 400
    // Whoever presses Enter without reading does no harm.
    initialFocus: destructive ? denyButton : confirmButton
    buttons: [
        WrappingButton {
            id: confirmButton

            width: Math.max(88, implicitWidth)
            text: dialog.confirmButtonText
            destructive: dialog.destructive
            onClicked: dialog.accept()
        },
        WrappingButton {
            id: denyButton

            width: Math.max(88, implicitWidth)
            text: dialog.denyButtonText
            onClicked: dialog.reject()
        }
    ]
}
