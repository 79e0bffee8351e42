import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Rows of the NUC Settings section: the numbers for the search for twinkling pixels and for the temperature of the flag,
// and the switches for the use of corrections.
RowGroup {
    id: group

    required property ZvtCameraModel camera
    required property int labelWidth
    // Whether the model is being read.
    required property bool refreshing

    // The operator changes a setting.
    signal edited

    // Empty before the number has been read.
    function _text(number: real, decimals: int, wasRead: bool): string {
        return camera && wasRead && isFinite(number) ? camera.safeConvertFloatToLocaleString(number, decimals) : ""
    }

    // 0 is not among the numbers of the camera.
    function _positiveText(number: real, decimals: int): string {
        return _text(number, decimals, number > 0)
    }

    component Field: NumberRow {
        labelWidth: group.labelWidth
        enabled: !group.refreshing || inUse
    }

    component Switch: ToggleRow {
        labelWidth: group.labelWidth
        enabled: !group.refreshing
    }

    Field {
        heading: "Number of Frames:"
        from: 2
        to: 128
        modelText: group._positiveText(group.camera ? group.camera.mfgNucSettingsModel.nucNumFrames : 0, 0)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.nucNumFrames = number
        }
    }

    Field {
        heading: "Twinkler Number of Frames:"
        from: 1
        to: 1048575
        modelText: group._positiveText(group.camera ? group.camera.mfgNucSettingsModel.twinklerNumFrames : 0, 0)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.twinklerNumFrames = number
        }
    }

    Field {
        heading: "Twinkler Delta:"
        to: 16383
        // May be 0, and is read together with the number of frames.
        modelText: group._text(group.camera ? group.camera.mfgNucSettingsModel.twinklerDelta : 0, 0,
                                 group.camera ? group.camera.mfgNucSettingsModel.twinklerNumFrames > 0 : false)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.twinklerDelta = number
        }
    }

    Field {
        heading: "Flag Max Temperature:"
        from: 40
        to: 100
        decimals: 1
        modelText: group._positiveText(group.camera ? group.camera.mfgNucSettingsModel.flagMaxTemp : 0, 1)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.flagMaxTemp = number
        }
    }

    Field {
        heading: "Flag Timeout:"
        from: 15000
        to: 300000
        modelText: group._positiveText(group.camera ? group.camera.mfgNucSettingsModel.timeout : 0, 0)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.timeout = number
        }
    }

    Field {
        heading: "Stable Delta:"
        from: 0.1
        to: 5
        decimals: 2
        modelText: group._positiveText(group.camera ? group.camera.mfgNucSettingsModel.stableDelta : 0, 2)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.stableDelta = number
        }
    }

    Field {
        heading: "Stable Count:"
        from: 1
        to: 128
        modelText: group._positiveText(group.camera ? group.camera.mfgNucSettingsModel.stableCount : 0, 0)
        onEntered: number => {
            group.edited()
            group.camera.mfgNucSettingsModel.stableCount = number
        }
    }

    Switch {
        text: "Use Factory Bad Pixels"
        checked: group.camera ? group.camera.mfgNucSettingsModel.useFactoryBadPixels : false
        onToggled: {
            group.edited()
            group.camera.mfgNucSettingsModel.useFactoryBadPixels = checked
        }
    }

    Switch {
        text: "NUC Video Output"
        checked: group.camera ? group.camera.mfgNucSettingsModel.nucVideoOutput : false
        onToggled: {
            group.edited()
            group.camera.mfgNucSettingsModel.nucVideoOutput = checked
        }
    }

    Switch {
        text: "Show Bad Pixels"
        checked: group.camera ? group.camera.mfgNucSettingsModel.showBadPixels : false
        onToggled: {
            group.edited()
            group.camera.mfgNucSettingsModel.showBadPixels = checked
        }
    }

    Switch {
        text: "NUC Digital Data"
        checked: group.camera ? group.camera.mfgNucSettingsModel.nucDigitalData : false
        onToggled: {
            group.edited()
            group.camera.mfgNucSettingsModel.nucDigitalData = checked
        }
    }
}
