import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0

// What several parts of the page need to know about the recorder. Without a model the state is unknown, and all else is
// false.
QtObject {
    required property SsdTabModel model
    required property bool connected

    // The SsdTabModel.SsdState.
    readonly property int state: model ? model.state : SsdTabModel.UNKNOWN_STATE_QML_ONLY_NOT_SDK
    readonly property bool armed: state === SsdTabModel.ARMED
    readonly property bool canInteract: model ? model.canInteract : false
    // Whether the operator can choose what is recorded and use the playback.
    readonly property bool usable: canInteract && !armed
    readonly property bool hasModes: model ? model.recordModeAvailable : false
    // Whether there is a drive that can be used.
    readonly property bool hasDrive: model ? model.drivePresent && model.driveRecognized : false
    // Whether recordings go to the drive.
    readonly property bool toDisk: model ? model.recordMode === SsdTabModel.MODE_TO_DISK : false
    // Whether there is something to play.
    readonly property bool hasVideo: model ? model.ramContainsVideo : false
    // Whether the connection can download recordings.
    readonly property bool canDownload: model ? model.canDownload : false
    // Whether the movies of the drive can be listed, whether the recording can be downloaded, and whether movies of the
    // drive can be downloaded.
    readonly property bool mayList: usable && hasDrive
    readonly property bool mayDownload: canInteract && hasVideo && canDownload
    readonly property bool mayDownloadBatch: mayList && canDownload && state !== SsdTabModel.PLAYING
                                             && state !== SsdTabModel.PAUSED
}
