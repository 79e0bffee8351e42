import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.dialogs
import zvt.look
import zvt.rows

// Edits the names of all filters that the camera knows, in one go. Every opening reads the names again.
InformationDialog {
    id: dialog

    required property ZvtCameraModel camera

    readonly property bool _refreshing: camera ? camera.editFilterNamesModel.refreshing : false

    function _save() {
        if (!camera.editFilterNamesModel.validateAll()) {
            invalidDialog.open()
            return
        }
        camera.editFilterNamesModel.saveAllModified()
        accept()
    }

    //: Title of a dialog
    title: qsTr("Edit Filter Names")
    fullWidth: 560
    initialFocus: cancelButton
    onAboutToShow: {
        camera.editFilterNamesModel.refresh()
        camera.editFilterNamesModel.visible = true
    }
    onClosed: {
        if (camera)
            camera.editFilterNamesModel.visible = false
    }

    contentItem: FilterNameTable {
        camera: dialog.camera
        onConfirmed: dialog._save()
    }
    buttons: [
        DialogButton {
            enabled: !dialog._refreshing
            primary: true
            //: Saves the edited names in the camera
            text: qsTr("Save")
            onClicked: dialog._save()
        },
        DialogButton {
            id: cancelButton

            enabled: !dialog._refreshing
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]

    LazyLoader {
        id: invalidDialog

        InformationDialog {
            //: Title of a message
            title: qsTr("Invalid Filter Name(s)")
            //: A message
            text: qsTr("At least one name is invalid. Please check and try again.")
        }
    }
}
