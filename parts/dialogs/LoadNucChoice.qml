import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// The choice of the settings that are set again when a correction is loaded. Each change reaches the model at once.
DialogScroller {
    id: choice

    required property ZvtCameraModel camera

    readonly property Item firstField: _loadsSettings ? settingsRadio : tableRadio
    readonly property bool _loadsSettings: camera ? camera.loadNucOptions.loadSettings : false

    function _chooseAll(use: bool) {
        const options = camera.loadNucOptions
        options.useIntTime = use
        options.useFrameSyncMode = use
        options.useWindowSize = use
        options.useDigitalGainOffset = use
        options.useInvertRevert = use
        options.useAnalogOffset = use
        options.useFrameRate = use
        options.useDetectorBias = use
        options.useFilter = use
        options.useFPAGainLevel = use
        options.useSkimming = use
        options.useColor = use
    }

    component OptionBox: WrappingCheckBox {
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }

    ColumnLayout {
        spacing: 0

        Radio {
            id: tableRadio

            Layout.fillWidth: true
            checked: !choice._loadsSettings
            //: What a load of a correction loads
            text: qsTr("Load Table Only")
            onToggled: choice.camera.loadNucOptions.loadSettings = false
        }

        Radio {
            id: settingsRadio

            Layout.fillWidth: true
            checked: choice._loadsSettings
            //: What a load of a correction loads; a list of settings follows
            text: qsTr("Load Table and the Following Settings")
            onToggled: choice.camera.loadNucOptions.loadSettings = true
        }
    }

    GridLayout {
        Layout.fillWidth: true
        Layout.leftMargin: 24
        columns: 2
        columnSpacing: 16
        rowSpacing: 0
        enabled: choice._loadsSettings

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Integration Time")
            checked: choice.camera ? choice.camera.loadNucOptions.useIntTime : false
            onToggled: choice.camera.loadNucOptions.useIntTime = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Frame Sync Mode")
            checked: choice.camera ? choice.camera.loadNucOptions.useFrameSyncMode : false
            onToggled: choice.camera.loadNucOptions.useFrameSyncMode = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Window Size")
            checked: choice.camera ? choice.camera.loadNucOptions.useWindowSize : false
            onToggled: choice.camera.loadNucOptions.useWindowSize = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Digital Gain/Offset")
            checked: choice.camera ? choice.camera.loadNucOptions.useDigitalGainOffset : false
            onToggled: choice.camera.loadNucOptions.useDigitalGainOffset = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Invert/Revert")
            checked: choice.camera ? choice.camera.loadNucOptions.useInvertRevert : false
            onToggled: choice.camera.loadNucOptions.useInvertRevert = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Analog Offset")
            checked: choice.camera ? choice.camera.loadNucOptions.useAnalogOffset : false
            onToggled: choice.camera.loadNucOptions.useAnalogOffset = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Frame Rate")
            checked: choice.camera ? choice.camera.loadNucOptions.useFrameRate : false
            onToggled: choice.camera.loadNucOptions.useFrameRate = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Detector Bias")
            checked: choice.camera ? choice.camera.loadNucOptions.useDetectorBias : false
            onToggled: choice.camera.loadNucOptions.useDetectorBias = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Filter")
            checked: choice.camera ? choice.camera.loadNucOptions.useFilter : false
            onToggled: choice.camera.loadNucOptions.useFilter = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("FPA Gain Level")
            checked: choice.camera ? choice.camera.loadNucOptions.useFPAGainLevel : false
            onToggled: choice.camera.loadNucOptions.useFPAGainLevel = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Skimming")
            checked: choice.camera ? choice.camera.loadNucOptions.useSkimming : false
            onToggled: choice.camera.loadNucOptions.useSkimming = checked
        }

        OptionBox {
            //: A setting that is set again when a correction is loaded
            text: qsTr("Color")
            checked: choice.camera ? choice.camera.loadNucOptions.useColor : false
            onToggled: choice.camera.loadNucOptions.useColor = checked
        }
    }

    RowLayout {
        Layout.leftMargin: 24
        spacing: 8
        enabled: choice._loadsSettings

        WrappingButton {
            //: Checks all boxes
            text: qsTr("Select All")
            onClicked: choice._chooseAll(true)
        }

        WrappingButton {
            //: Unchecks all boxes
            text: qsTr("Clear All")
            onClicked: choice._chooseAll(false)
        }
    }
}
