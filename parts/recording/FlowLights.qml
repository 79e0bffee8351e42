import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The colours of the flow diagram: which parts a state of the recorder lights, and which of them pulse. (The QML
// compiler of this Qt version knows no bit operations, so the sets of parts are functions.)
QtObject {
    id: lights

    // The icons and arrows of the diagram.
    enum Part {
        Ssd,
        SsdToRam,
        RamToSsd,
        Ram,
        CamToRam,
        Detector,
        CamToApp,
        Desktop,
        RamPlayback
    }

    // The paths of the images. The drive alone is the "path" while it is formatted.
    enum Path {
        NoPath,
        RecordPath,
        PlaybackPath,
        SavePath,
        LoadPath,
        LivePath,
        DrivePath,
        DownloadPath,
        BatchPath
    }

    // The SsdTabModel.SsdState.
    required property int recorderState
    // Whether the recording is made on the drive.
    required property bool toDisk
    // Whether the playback comes from the drive.
    required property bool fromDisk
    // The path that the operator points at. It is highlighted while nothing pulses.
    required property int hoveredPath
    // Whether parts may pulse.
    required property bool animated

    // The path that the state lights: in red during a recording, otherwise in green.
    readonly property int _path: {
        switch (recorderState) {
        case SsdTabModel.DISARMED:
        case SsdTabModel.ARMED:
        case SsdTabModel.ARMING:
        case SsdTabModel.COMPLETE:
            return FlowLights.LivePath
        case SsdTabModel.TRIGGERED:
        case SsdTabModel.RECORD_PAUSED:
            return FlowLights.RecordPath
        case SsdTabModel.PLAYING:
        case SsdTabModel.PAUSED:
        case SsdTabModel.MOVIE_LOADED:
            return FlowLights.PlaybackPath
        case SsdTabModel.SAVING:
            return FlowLights.SavePath
        case SsdTabModel.LOADING:
            return FlowLights.LoadPath
        case SsdTabModel.FORMATTING:
            return FlowLights.DrivePath
        default:
            return FlowLights.NoPath
        }
    }
    // Whether the live picture is shown in a dark colour beside it.
    readonly property bool _liveBeside: _path === FlowLights.RecordPath || _path === FlowLights.SavePath
                                        || _path === FlowLights.DrivePath

    // While the drive is formatted, its icon pulses; otherwise the arrows of the path.
    readonly property bool _drivePulses: animated && _path === FlowLights.DrivePath
    readonly property bool _arrowsPulse: animated && (recorderState === SsdTabModel.TRIGGERED
                                                      || recorderState === SsdTabModel.PLAYING
                                                      || recorderState === SsdTabModel.PAUSED
                                                      || recorderState === SsdTabModel.SAVING)

    readonly property color _green: Look.tidepoolAccentGreen
    readonly property color _darkGreen: Qt.darker(_green, 2.0)
    readonly property color _red: Qt.lighter(Look.tidepoolAccentRed, 1.3)

    readonly property Pulse _arrowPulse: Pulse {
        objectName: "arrowPulse"
        running: lights._arrowsPulse
    }
    readonly property Pulse _drivePulse: Pulse {
        objectName: "drivePulse"
        fade: 200
        rest: 0
        running: lights._drivePulses
    }

    function _isArrow(part: int): bool {
        return part === FlowLights.SsdToRam || part === FlowLights.RamToSsd || part === FlowLights.CamToRam
                || part === FlowLights.CamToApp || part === FlowLights.RamPlayback
    }

    function _isOn(path: int, part: int): bool {
        switch (path) {
        case FlowLights.LivePath:
            return part === FlowLights.Detector || part === FlowLights.CamToApp || part === FlowLights.Desktop
        case FlowLights.RecordPath:
            return part === FlowLights.Detector || part === FlowLights.CamToRam || part === FlowLights.Ram
                    || (toDisk && _isOn(FlowLights.SavePath, part))
        case FlowLights.PlaybackPath:
            return _isOn(FlowLights.DownloadPath, part) || (fromDisk && _isOn(FlowLights.LoadPath, part))
        case FlowLights.DownloadPath:
            return part === FlowLights.Ram || part === FlowLights.RamPlayback || part === FlowLights.Desktop
        case FlowLights.BatchPath:
            return _isOn(FlowLights.LoadPath, part) || _isOn(FlowLights.DownloadPath, part)
        case FlowLights.SavePath:
            return part === FlowLights.Ram || part === FlowLights.RamToSsd || part === FlowLights.Ssd
        case FlowLights.LoadPath:
            return part === FlowLights.Ssd || part === FlowLights.SsdToRam || part === FlowLights.Ram
        case FlowLights.DrivePath:
            return part === FlowLights.Ssd
        default:
            return false
        }
    }

    function color(part: int): color {
        if (_isOn(hoveredPath, part) && !_arrowsPulse && !_drivePulses)
            return Look.kestrinAccentBlue
        if (_isOn(_path, part))
            return _path === FlowLights.RecordPath ? _red : _green
        if (_liveBeside && _isOn(FlowLights.LivePath, part))
            return _darkGreen
        return _isArrow(part) ? "gray" : Look.strongTextColor
    }

    function opacity(part: int): real {
        if (!_isOn(_path, part))
            return 1
        if (_isArrow(part))
            return _arrowsPulse ? _arrowPulse.level : 1
        return _drivePulses ? _drivePulse.level : 1
    }

    // Each path begins with the opaque part of the pulse.
    on_PathChanged: {
        if (_arrowPulse.running)
            _arrowPulse.restart()
    }
}
