import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The body of the SSD page. All of it is disabled while the model is read, also while a field has the focus.
SectionBody {
    id: settings

    readonly property SsdTabModel recorder: camera ? camera.ssdTabModel : null
    readonly property bool _refreshing: recorder ? recorder.refreshing : false
    readonly property bool _hasRefreshed: recorder ? recorder.hasRefreshed : false
    // Whether the values have been read. Fields are empty before.
    property bool _wasRead
    // The control that had the keyboard focus when the read began, and how it got the focus.
    property T.Control _focused: null
    property int _focusReason

    // The operator wants to choose the folder of automatic downloads.
    signal folderRequested
    // The operator wants to see the movies on the drive.
    signal moviesRequested
    // The operator wants to download the recording.
    signal downloadRequested
    // The operator wants to download movies of the drive.
    signal batchDownloadRequested

    // Arms the recorder with what the fields show. A field that loses the focus may emit its edit after the click on
    // the button, so the recorder is armed after all present events.
    function _arm() {
        options.commitFrames()
        playback.commitRate()
        Qt.callLater(recorder.arm)
    }

    // A control that is disabled loses the keyboard focus. Qt returns it afterwards, unless the operator has moved the
    // focus during the read, but it forgets that the control had got it by keyboard, and so the ring would be hidden.
    function _updateEnabled() {
        if (_refreshing) {
            _focused = includes(Window.activeFocusItem) ? Window.activeFocusItem as T.Control : null
            if (_focused)
                _focusReason = _focused.focusReason
        }
        enabled = !_refreshing
        if (!_refreshing && _focused && _focused.activeFocus)
            _focused.focusReason = _focusReason
    }

    function _updateRead() {
        if (_hasRefreshed)
            _wasRead = true
    }

    on_RefreshingChanged: _updateEnabled()
    on_HasRefreshedChanged: _updateRead()
    Component.onCompleted: {
        _updateEnabled()
        _updateRead()
    }

    RecorderStatus {
        id: recorderStatus

        model: settings.recorder
        connected: settings.connected
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop
        Layout.preferredWidth: 1

        FlowDiagram {
            objectName: "flowDiagram"
            Layout.fillWidth: true
            model: settings.recorder
            connected: settings.connected
            // The first read of the name is a call to the camera, which a hidden page does not make.
            cameraName: settings.isShown && settings.camera
                        ? (settings.camera.model + " " + settings.camera.serial).trim() : ""
            hoveredPath: buttons.hoveredPath !== FlowLights.NoPath ? buttons.hoveredPath : playback.hoveredPath
            wasRead: settings._wasRead
            onRefreshRequested: settings.recorder.refresh()
        }

        CommandButtons {
            id: buttons

            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 4
            Layout.bottomMargin: 8
            model: settings.recorder
            status: recorderStatus
            fieldsAcceptable: playback.rateAcceptable && options.acceptable
            filenameAcceptable: playback.filenameAcceptable
            onArmRequested: settings._arm()
            onMoviesRequested: settings.moviesRequested()
            onDownloadRequested: settings.downloadRequested()
            onBatchDownloadRequested: settings.batchDownloadRequested()
        }

        PlaybackSettings {
            id: playback

            model: settings.recorder
            status: recorderStatus
            camera: settings.camera
            isShown: settings.isShown && settings.connected
            wasRead: settings._wasRead
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop
        Layout.preferredWidth: 1
        spacing: Look.groupSpacing

        RecordingOptions {
            id: options

            model: settings.recorder
            status: recorderStatus
            wasRead: settings._wasRead
        }

        AutoDownloadSettings {
            visible: recorderStatus.hasModes
            model: settings.recorder
            onFolderRequested: settings.folderRequested()
        }
    }
}
