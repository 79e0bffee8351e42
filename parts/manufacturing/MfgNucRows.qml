import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Rows of the NUC Settings section: the numbers for the search for twinkling pixels and for the temperature of the flag,
// and the switches for the use of corrections.
RowGroup {
    id: group

    required property ApplyBody section
    required property int labelWidth

    readonly property ZvtCameraModel _camera: section.camera

    component Field: ModelNumberRow {
        section: group.section
        labelWidth: group.labelWidth
        onSent: group.section.unapplied = true
    }

    component Switch: ApplySwitch {
        section: group.section
        labelWidth: group.labelWidth
    }

    Field {
        heading: "Number of Frames:"
        from: 2
        to: 128
        value: group._camera ? group._camera.mfgNucSettingsModel.nucNumFrames : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.nucNumFramesChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.nucNumFrames = number
    }

    Field {
        heading: "Twinkler Number of Frames:"
        from: 1
        to: 1048575
        value: group._camera ? group._camera.mfgNucSettingsModel.twinklerNumFrames : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.twinklerSetupChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.twinklerNumFrames = number
    }

    Field {
        heading: "Twinkler Delta:"
        to: 16383
        value: group._camera ? group._camera.mfgNucSettingsModel.twinklerDelta : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.twinklerSetupChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.twinklerDelta = number
    }

    Field {
        heading: "Flag Max Temperature:"
        from: 40
        to: 100
        decimals: 1
        value: group._camera ? group._camera.mfgNucSettingsModel.flagMaxTemp : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.flagSetupChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.flagMaxTemp = number
    }

    Field {
        heading: "Flag Timeout:"
        from: 15000
        to: 300000
        value: group._camera ? group._camera.mfgNucSettingsModel.timeout : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.flagSetupChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.timeout = number
    }

    Field {
        heading: "Stable Delta:"
        from: 0.1
        to: 5
        decimals: 2
        value: group._camera ? group._camera.mfgNucSettingsModel.stableDelta : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.flagSetupChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.stableDelta = number
    }

    Field {
        heading: "Stable Count:"
        from: 1
        to: 128
        value: group._camera ? group._camera.mfgNucSettingsModel.stableCount : 0
        notifier: group._camera ? group._camera.mfgNucSettingsModel.flagSetupChanged : null
        onSent: number => group._camera.mfgNucSettingsModel.stableCount = number
    }

    Switch {
        text: "Use Factory Bad Pixels"
        checked: group._camera ? group._camera.mfgNucSettingsModel.useFactoryBadPixels : false
        onToggled: group._camera.mfgNucSettingsModel.useFactoryBadPixels = checked
    }

    Switch {
        text: "NUC Video Output"
        checked: group._camera ? group._camera.mfgNucSettingsModel.nucVideoOutput : false
        onToggled: group._camera.mfgNucSettingsModel.nucVideoOutput = checked
    }

    Switch {
        text: "Show Bad Pixels"
        checked: group._camera ? group._camera.mfgNucSettingsModel.showBadPixels : false
        onToggled: group._camera.mfgNucSettingsModel.showBadPixels = checked
    }

    Switch {
        text: "NUC Digital Data"
        checked: group._camera ? group._camera.mfgNucSettingsModel.nucDigitalData : false
        onToggled: group._camera.mfgNucSettingsModel.nucDigitalData = checked
    }
}
