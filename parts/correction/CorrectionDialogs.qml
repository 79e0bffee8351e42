import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The dialogs of the Correction page, and what follows when they are accepted.
Item {
    id: dialogs

    required property ZvtCameraModel camera
    // The size of the page, which limits that of the description of a correction.
    required property size pageSize

    // Emitted when the main page must be blocked (true) or released (false): it is blocked while the wizard is open and
    // the camera connected.
    signal pageBlocked(blocked: bool)

    function showInfo(nucName: string) {
        infoDialog.instance().model = camera.correctionTabModel.infoForNuc(nucName)
        infoDialog.open()
    }

    function makeNuc(preset: int, nucName: string, calibrated: bool) {
        camera.nucProcess.preset = preset
        camera.nucProcess.refresh()
        const dialog = newDialog.instance()
        dialog.nucName = nucName
        dialog.hasNuc = nucName !== ""
        dialog.hasCal = calibrated
        dialog.open()
    }

    function showOptions() {
        optionsDialog.open()
    }

    // Chooses a name under which the correction of a preset is saved.
    function save(preset: int, nucName: string) {
        _setPreset(preset, nucName)
        _showList("save")
    }

    // Chooses a stored correction that is loaded into a preset.
    function load(preset: int) {
        _setPreset(preset, "")
        _showList("load")
    }

    function manage() {
        _showList("manage")
    }

    function _setPreset(preset: int, nucName: string) {
        const dialog = listDialog.instance()
        dialog.preset = preset
        dialog.nucName = nucName
    }

    function _showList(mode: string) {
        camera.nucList.refresh()
        listDialog.instance().mode = mode
        listDialog.open()
    }

    LazyLoader {
        id: listDialog

        file: "qrc:/zvt/dialogs/NucListDialog.qml"
        initialProperties: ({ camera: Qt.binding(() => dialogs.camera) })
    }

    // In the mode "manage" a double click accepts the dialog too, with the preset of the last save or load. Without one
    // the preset is -1, which the model ignores.
    Connections {
        target: listDialog.item
        function onAccepted() {
            const dialog = listDialog.instance()
            if (dialog.mode === "save")
                dialogs.camera.correctionTabModel.saveNuc(dialog.preset, dialog.nucName)
            else
                dialogs.camera.correctionTabModel.loadNuc(dialog.preset, dialog.nucName)
        }
    }

    LazyLoader {
        id: optionsDialog

        file: "qrc:/zvt/dialogs/LoadNucOptionsDialog.qml"
        initialProperties: ({ camera: Qt.binding(() => dialogs.camera) })
    }

    LazyLoader {
        id: infoDialog

        file: "qrc:/zvt/dialogs/NucInfoDialog.qml"
        initialProperties: ({
            width: Qt.binding(() => Math.min(600, dialogs.pageSize.width - 64)),
            height: Qt.binding(() => Math.min(800, dialogs.pageSize.height - 64))
        })
    }

    LazyLoader {
        id: newDialog

        file: "qrc:/zvt/dialogs/NucNewDialog.qml"
        initialProperties: ({ camera: Qt.binding(() => dialogs.camera) })
    }

    // An offset update changes the correction of the preset: no new one has to be stored.
    Connections {
        target: newDialog.item
        function onPageBlocked(blocked: bool) {
            dialogs.pageBlocked(blocked)
        }
        function onAccepted() {
            const process = dialogs.camera.nucProcess
            if (process.nucType !== NucProcessModel.TYPE_UPDATE_OFFSET)
                dialogs.camera.correctionTabModel.saveNuc(process.preset, newDialog.instance().nucName)
        }
    }
}
