import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import com.kestrin.hlxcamui 1.0
import zvt.dialogs
import zvt.rows

// The settings that are set again when a correction is loaded. Each change is effective at once; Cancel and Esc restore
// the choice that the dialog was opened with.
InformationDialog {
    id: dialog

    required property ZvtCameraModel camera

    //: Title of a dialog
    title: qsTr("Load NUC Options")
    fullWidth: 500
    initialFocus: choice.firstField
    onAboutToShow: {
        camera.loadNucOptions.save()
        // All of the dialog fits into a window of this height.
        if (DialogWindowResizer)
            DialogWindowResizer.pushMinSize(Qt.size(fullWidth + 64, 440))
    }
    onAboutToHide: {
        if (DialogWindowResizer)
            DialogWindowResizer.popMinSize()
    }
    onRejected: {
        if (camera)
            camera.loadNucOptions.restore()
    }

    contentItem: LoadNucChoice {
        id: choice

        camera: dialog.camera
    }
    buttons: [
        DialogButton {
            primary: true
            //: Closes a dialog and keeps the changes
            text: qsTr("OK")
            onClicked: dialog.accept()
        },
        DialogButton {
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
