import QtQuick
import zvt.rows

// Asks a question. The confirming button accepts the dialog; the denying button and Esc reject it.
InformationDialog {
    id: dialog

    //: Answer to a question
    property string confirmButtonText: qsTr("Yes")
    //: Answer to a question
    property string denyButtonText: qsTr("No")
    // Whether the confirmed action cannot be undone.
    property bool destructive

    fullWidth: 400
    // Enter must not confirm an action that cannot be undone.
    initialFocus: destructive ? denyButton : confirmButton
    buttons: [
        DialogButton {
            id: confirmButton

            text: dialog.confirmButtonText
            destructive: dialog.destructive
            onClicked: dialog.accept()
        },
        DialogButton {
            id: denyButton

            text: dialog.denyButtonText
            onClicked: dialog.reject()
        }
    ]
}
