pragma ComponentBehavior: Bound

import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// How the presets are used in turn, and the settings of each.
RowGroup {
    id: settings

    required property ZvtCameraModel camera
    required property bool connected

    readonly property SetupGeneralModel general: camera ? camera.setupGeneralModel : null
    // The sequencing modes, by the numbers of ESEQUENCING_MODE.
    readonly property int _mode: general ? general.sequencingMode : 0
    readonly property bool superframing: _mode === 1
    readonly property bool presetSequencing: _mode === 2
    // Whether the longest rows need all the room.
    readonly property bool narrow: presetSequencing && width < 680

    Heading {
        //: Heads the rows of the presets
        text: qsTr("Sequencing Mode and Integration Settings")
    }

    ChoiceRow {
        visible: settings.general ? settings.general.sequencingModeStrings.length > 1 : false
        //: How the presets are used in turn
        heading: qsTr("Sequencing Mode:")
        toolTip: name
        model: settings.general ? settings.general.sequencingModeStrings : []
        currentIndex: settings.general ? settings.general.sequencingModeIndex : -1
        onActivated: index => settings.general.sequencingModeIndex = index
    }

    Repeater {
        model: 4

        PresetRow {
            required property int index

            number: index
            camera: settings.camera
            connected: settings.connected
            superframing: settings.superframing
            presetSequencing: settings.presetSequencing
            narrow: settings.narrow
        }
    }

    ChoiceRow {
        visible: settings.presetSequencing && (settings.camera ? settings.camera.cameraCapabilitiesModel.hasGigEPreset : false)
        //: Which preset's images go out over Ethernet
        heading: qsTr("GigE Preset:")
        //: The images of every preset, as far as the connection carries them
        model: ["0", "1", "2", "3", qsTr("All (Best Effort)")]
        currentIndex: settings.general ? settings.general.gigEPreset : -1
        onActivated: index => settings.general.gigEPreset = index
    }

    ChoiceRow {
        visible: settings.presetSequencing || settings.superframing
        //: Which preset's images the video output shows
        heading: qsTr("Video Preset:")
        model: ["0", "1", "2", "3"]
        currentIndex: settings.general ? settings.general.videoPreset : -1
        onActivated: index => settings.general.videoPreset = index
    }
}
