pragma ComponentBehavior: Bound

import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The sequencing mode of the presets, and the settings of each preset.
RowGroup {
    id: settings

    required property ZvtCameraModel camera
    required property bool connected

    readonly property SetupGeneralModel general: camera ? camera.setupGeneralModel : null
    // The numbers of ESEQUENCING_MODE.
    readonly property int _mode: general ? general.sequencingMode : 0
    readonly property bool superframing: _mode === 1
    readonly property bool presetSequencing: _mode === 2
    // Whether the rows must save width.
    readonly property bool narrow: presetSequencing && width < 680

    Heading {
        //: Heading of the rows for the presets
        text: qsTr("Sequencing Mode and Integration Settings")
    }

    ChoiceRow {
        visible: settings.general ? settings.general.sequencingModeStrings.length > 1 : false
        //: How the camera switches between the presets
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
        //: The preset whose images are sent over Ethernet
        heading: qsTr("GigE Preset:")
        //: The images of all presets, as many as the connection can transfer
        model: ["0", "1", "2", "3", qsTr("All (Best Effort)")]
        currentIndex: settings.general ? settings.general.gigEPreset : -1
        onActivated: index => settings.general.gigEPreset = index
    }

    ChoiceRow {
        visible: settings.presetSequencing || settings.superframing
        //: The preset whose images the video output shows
        heading: qsTr("Video Preset:")
        model: ["0", "1", "2", "3"]
        currentIndex: settings.general ? settings.general.videoPreset : -1
        onActivated: index => settings.general.videoPreset = index
    }
}
