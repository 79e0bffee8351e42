import QtQuick
import QtQuick.Controls

// Asks before a lens state is deleted in the camera.
ConfirmationDialog {
    id: dialog

    required property var tabModel
    property string name

    //: Title of a question
    title: qsTr("Confirm")
    //: Deletes a lens state
    confirmButtonText: qsTr("Delete")
    //: Closes a dialog and changes nothing
    denyButtonText: qsTr("Cancel")
    destructive: true
    fullWidth: 300
    onAccepted: tabModel.deleteLensState(name)

    contentItem: Column {
        spacing: 8

        Label {
            width: parent.width
            text: qsTr("Delete this lens state?")
            color: root.textColor
            wrapMode: Text.Wrap
        }

        Label {
            width: parent.width
            text: dialog.name
            textFormat: Text.PlainText
            color: root.strongTextColor
            wrapMode: Text.Wrap
        }
    }
}
