import QtQuick
import QtQuick.Layouts
import zvt.look

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

    contentItem: ColumnLayout {
        spacing: Look.rowSpacing

        PlainLabel {
            Layout.fillWidth: true
            //: A question; the name of the lens state follows
            text: qsTr("Delete this lens state?")
            wrapMode: Text.Wrap
        }

        PlainLabel {
            Layout.fillWidth: true
            text: dialog.name
            color: Look.strongTextColor
            wrapMode: Text.Wrap
        }
    }
}
