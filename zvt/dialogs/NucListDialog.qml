import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import com.kestrin.hlxcamui 1.0
import zvt

// The corrections in the camera: to load one into a preset, to save the correction of a preset under a name, or to
// manage them. `mode`, `preset` and `nucName` must be set, and a read of `camera.nucList` started, before it opens.
// When it is accepted, `nucName` is the chosen name.
InformationDialog {
    id: dialog

    required property ZvtCameraModel camera
    // "load", "save" or "manage".
    property string mode: "manage"
    property int preset: -1
    property string nucName

    readonly property int _fullHeight: parent ? Math.max(parent.height - 64, 400) : 400

    function _title(): string {
        switch (mode) {
        case "load":
            //: Title of a dialog; %1 is the number of a preset
            return qsTr("Load NUC into Preset %1").arg(preset)
        case "save":
            //: Title of a dialog; %1 is the number of a preset
            return qsTr("Save NUC in Preset %1").arg(preset)
        default:
            //: Title of a dialog
            return qsTr("Manage NUCs")
        }
    }

    title: _title()
    fullWidth: 664
    height: parent ? Math.min(_fullHeight, parent.height - 32) : _fullHeight
    // The control has buttons.
    footer.visible: false
    closesByEscape: camera ? !camera.nucList.transferring : true
    initialFocus: list.list
    onAboutToShow: {
        DialogWindowResizer.pushMinSize(Qt.size(fullWidth + 64, _fullHeight + 64))
        list.clearCurrentIndex()
        list.nucName = mode === "manage" ? "" : nucName
        if (mode !== "save")
            return
        list.nameToSetIndexFromWhenNucListModelisLoaded = nucName
        if (!camera.nucList.refreshing)
            list.setCurrentIndexByNucName()
    }
    onAboutToHide: DialogWindowResizer.popMinSize()

    contentItem: NucListCtrl {
        id: list

        camera: dialog.camera
        mode: dialog.mode
        onAccepted: {
            dialog.nucName = nucName
            dialog.accept()
        }
        onRejected: dialog.reject()
    }
}
