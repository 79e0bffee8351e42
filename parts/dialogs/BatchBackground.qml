import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// The background of a row of a batch: the color of its status, and the progress of the row while it is downloaded or
// converted.
Rectangle {
    id: back

    required property int status
    required property real progress
    // Whether a run is under way.
    required property bool downloading

    readonly property bool running: status >= BatchDownloadEntry.STATUS_LOADING
                                    && status <= BatchDownloadEntry.STATUS_CONVERTING

    function _color(): color {
        switch (status) {
        case BatchDownloadEntry.STATUS_NOT_STARTED:
            return Look.batchWaitingColor
        case BatchDownloadEntry.STATUS_FAILED:
            return Look.batchFailedColor
        case BatchDownloadEntry.STATUS_SUCCEEDED:
            return Look.batchSucceededColor
        default:
            return Look.batchRunningColor
        }
    }

    objectName: "batchRowColor"
    color: _color()

    Loader {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        active: back.downloading && back.running
        sourceComponent: BatchDownloadEntryProgressBar {
            implicitHeight: 5
            // No frames are counted before the transfer.
            indeterminate: back.status < BatchDownloadEntry.STATUS_DOWNLOADING
            value: back.progress
        }
    }
}
