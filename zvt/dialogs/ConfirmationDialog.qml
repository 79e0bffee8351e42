import QtQuick
import zvt.rows

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
    // So that Enter confirms nothing that cannot be undone.
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
