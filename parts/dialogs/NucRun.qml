import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// The run that the correction wizard has started. It is remembered until it has failed or its result has been accepted
// or discarded, also while the wizard is closed and while another camera is connected.
QtObject {
    id: run

    required property ZvtCameraModel camera
    // Whether the run goes on, or its result is neither accepted nor discarded.
    property bool undecided
    // The name under which its correction is to be saved.
    property string nucName

    property string _serial
    property int _preset
    property int _type

    function start(name: string) {
        const process = camera.nucProcess
        undecided = true
        nucName = name
        _serial = camera.serial
        _preset = process.preset
        _type = process.nucType
        process.start()
    }

    // Whether the camera is another one than that of the run. This asks the camera, whose signals may come later. Its
    // serial number is empty while it is disconnected.
    function isOfOtherCamera(): bool {
        const serial = camera.serial
        return serial !== "" && serial !== _serial
    }

    // Whether the wizard can show the run or its result.
    function canContinue(): bool {
        return undecided && !isOfOtherCamera()
    }

    // Sets what the run is made for again: the wizard may have been opened for another preset or camera.
    function restore() {
        camera.nucProcess.preset = _preset
        camera.nucProcess.nucType = _type
    }

    // Forgets a run that has ended without a result of its camera.
    function judge() {
        const process = camera.nucProcess
        if (process.status !== NucProcessModel.STATUS_READY || process.result !== NucProcessModel.RESULT_OKAY
                || isOfOtherCamera())
            undecided = false
    }

    // Ends the run, or drops its result. Ends a run also if it is not known who has started it.
    function drop() {
        if (undecided && isOfOtherCamera())
            return
        if (camera.nucProcess.inProgress)
            camera.nucProcess.abort()
        else if (undecided)
            camera.nucProcess.discard()
    }
}
