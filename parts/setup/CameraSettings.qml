import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// Settings of the camera as a whole.
RowGroup {
    id: settings

    required property ZvtCameraModel camera

    readonly property bool hasGain: camera ? camera.cameraCapabilitiesModel.hasFPAGain : false
    readonly property bool hasHighSensitivity: camera ? camera.setupTabModel.hsmAvailable : false
    readonly property bool hasSyncSource: camera ? camera.setupGeneralModel.isLowCost : false

    ChoiceRow {
        visible: settings.hasGain
        //: Gain of the detector
        heading: qsTr("FPA Gain:")
        model: settings.camera ? settings.camera.setupTabModel.fpaGainLevels : []
        currentIndex: settings.camera ? settings.camera.setupTabModel.selectedFPAGainLevel : -1
        onActivated: index => settings.camera.setupTabModel.selectedFPAGainLevel = index
    }

    SettingRow {
        id: noiseRow

        readonly property var _lastRead: ({ reduced: false })

        // The getter asks the camera each time and signals only changes made through this model, so it is read once
        // after each refresh.
        function _read(hasRefreshed: bool): bool {
            if (hasRefreshed)
                _lastRead.reduced = settings.camera.setupTabModel.reduceNoise
            return _lastRead.reduced
        }

        //: Heading of a switch that reduces the noise of the images
        heading: qsTr("Reduce Noise:")
        //: Tool tip
        toolTip: qsTr("Reduces noise by preventing integration from occuring during readout (aka ITR).")

        Toggle {
            Accessible.name: noiseRow.name
            toolTip: noiseRow.toolTip
            checked: noiseRow._read(settings.camera ? settings.camera.setupTabModel.hasRefreshed : false)
            onToggled: settings.camera.setupTabModel.reduceNoise = checked
        }
    }

    ChoiceRow {
        visible: settings.hasSyncSource
        enabled: settings.camera ? !settings.camera.setupTabModel.refreshing : false
        //: The source of the signal that starts each image
        heading: qsTr("Sync Source:")
        //: Sync source
        model: [qsTr("Internal"),
                //: Sync source
                qsTr("External"),
                //: Sync source
                qsTr("Video")]
        currentIndex: settings.camera ? settings.camera.setupTabModel.syncSource : -1
        onActivated: index => settings.camera.setupTabModel.syncSource = index
    }

    SettingRow {
        visible: settings.hasHighSensitivity

        WrappingCheckBox {
            //: A mode of the detector
            text: qsTr("Enable High Sensitivity Mode")
            checked: settings.camera ? settings.camera.setupTabModel.hsmEnabled : false
            onToggled: settings.camera.setupTabModel.hsmEnabled = checked
        }
    }
}
