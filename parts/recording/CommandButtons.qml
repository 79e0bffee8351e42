import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The buttons for the commands of the recorder.
Row {
    id: buttons

    required property SsdTabModel model
    required property RecorderStatus status
    // Whether the fields that arming needs hold acceptable values.
    required property bool fieldsAcceptable
    required property bool filenameAcceptable

    // The path of the images after the command of the button that the pointer is over.
    readonly property int hoveredPath: {
        if (arm.hovered && arm.enabled)
            return _armed ? FlowLights.NoPath : FlowLights.RecordPath
        if ((record.hovered && record.enabled) || (pause.hovered && pause.enabled))
            return _recording ? FlowLights.NoPath : FlowLights.RecordPath
        if (save.hovered && save.enabled)
            return FlowLights.SavePath
        // Without record modes, movies cannot be loaded.
        if (movies.hovered && movies.enabled && status.hasModes)
            return FlowLights.LoadPath
        if (download.hovered && download.enabled)
            return FlowLights.DownloadPath
        return batchDownload.hovered && batchDownload.enabled ? FlowLights.BatchPath : FlowLights.NoPath
    }
    readonly property int _state: status.state
    readonly property bool _armed: _state === SsdTabModel.ARMED
    readonly property bool _recording: _state === SsdTabModel.TRIGGERED
    readonly property bool _mayArm: _armed || _state === SsdTabModel.COMPLETE || _state === SsdTabModel.MOVIE_LOADED
                                    || _state === SsdTabModel.DISARMED

    // The operator wants to arm the recorder.
    signal armRequested
    // The operator wants to see the movies on the drive.
    signal moviesRequested
    // The operator wants to download the recording.
    signal downloadRequested
    // The operator wants to download movies of the drive.
    signal batchDownloadRequested

    component Command: CommandButton {
        implicitHeight: 32
    }

    spacing: 8

    Command {
        id: arm

        enabled: buttons.status.canInteract && buttons.fieldsAcceptable
                 && (!buttons.status.toDisk || buttons.status.hasDrive) && buttons._mayArm
        glyph: buttons._armed ? Glyph.stopCircle : Glyph.target
        tint: Look.armColor
        //: Tool tip: the recorder no longer waits for a trigger
        toolTip: buttons._armed ? qsTr("Disarm")
                                //: Tool tip: the recorder waits for a trigger
                                : qsTr("Arm for recording")
        onClicked: buttons._armed ? buttons.model.disarm() : buttons.armRequested()
    }

    Command {
        id: record

        enabled: buttons._armed || buttons._recording
        glyph: buttons._recording ? Glyph.stopCircle : Glyph.disc
        tint: Look.tidepoolAccentRed
        //: Tool tip: ends the recording
        toolTip: buttons._recording ? qsTr("Stop Recording")
                 //: Tool tip: records to the solid-state drive
                 : buttons.status.toDisk ? qsTr("Record to SSD")
                                         //: Tool tip: records to the camera's memory
                                         : qsTr("Record to RAM")
        onClicked: buttons._recording ? buttons.model.stopRecording() : buttons.model.triggerRecording()
    }

    Command {
        id: pause

        visible: buttons.status.hasModes
        enabled: buttons._recording || buttons._state === SsdTabModel.RECORD_PAUSED
        glyph: buttons._state === SsdTabModel.RECORD_PAUSED ? Glyph.play : Glyph.pause
        //: Tool tip: the recording can be resumed
        toolTip: buttons._recording ? qsTr("Pause Recording")
                                    //: Tool tip: goes on with a paused recording
                                    : qsTr("Resume Recording")
        onClicked: buttons._recording ? buttons.model.pauseRecording() : buttons.model.resumeRecording()
    }

    Command {
        id: save

        enabled: buttons.status.canInteract && buttons.filenameAcceptable && buttons.status.hasVideo
                 && buttons._state === SsdTabModel.COMPLETE && buttons.status.hasDrive
        glyph: Glyph.save
        //: Tool tip: copies the recording from the memory to the solid-state drive
        toolTip: qsTr("Save to SSD")
        onClicked: buttons.model.save()
    }

    Command {
        id: movies

        enabled: buttons.status.mayList
        glyph: Glyph.load
        //: Tool tip: loads a movie from the solid-state drive into the camera's memory
        toolTip: buttons.status.hasModes ? qsTr("Load Movie")
                                         //: Tool tip: shows the movies on the solid-state drive
                                         : qsTr("List Movies")
        onClicked: buttons.moviesRequested()
    }

    Command {
        id: download

        visible: buttons.status.hasModes
        enabled: buttons.status.mayDownload
        glyph: Glyph.download
        //: Tool tip: copies the recording from the camera's memory to a file
        toolTip: qsTr("Download Movie")
        onClicked: buttons.downloadRequested()
    }

    Command {
        id: batchDownload

        visible: buttons.status.hasModes
        enabled: buttons.status.mayDownloadBatch
        glyph: Glyph.files
        //: Tool tip: copies movies from the solid-state drive to files
        toolTip: qsTr("Batch Download Movies")
        onClicked: buttons.batchDownloadRequested()
    }
}
