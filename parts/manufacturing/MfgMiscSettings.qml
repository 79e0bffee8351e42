import QtQuick
import zvt.rows

// The body of the Miscellaneous Settings section.
ApplyBody {
    id: settings

    readonly property int _labelWidth: 160

    component Field: ModelNumberRow {
        section: settings
        labelWidth: settings._labelWidth
        onSent: settings.unapplied = true
    }

    refreshing: camera ? camera.mfgMiscSettingsModel.refreshing : false

    RowGroup {
        Field {
            heading: "DDE Threshold:"
            to: 16383
            value: settings.camera ? settings.camera.mfgMiscSettingsModel.ddeThreshold : 0
            notifier: settings.camera ? settings.camera.mfgMiscSettingsModel.ddeThresholdChanged : null
            onSent: threshold => settings.camera.mfgMiscSettingsModel.ddeThreshold = threshold
        }

        Field {
            heading: "FPA Clock Phase Shift:"
            to: 100000000
            value: settings.camera ? settings.camera.mfgMiscSettingsModel.fpaClockPhaseShift : 0
            notifier: settings.camera ? settings.camera.mfgMiscSettingsModel.fpaClockPhaseShiftChanged : null
            onSent: shift => settings.camera.mfgMiscSettingsModel.fpaClockPhaseShift = shift
        }

        SettingRow {
            labelWidth: settings._labelWidth

            ApplyButton {
                section: settings
                Accessible.name: "Apply Miscellaneous Settings"
                onApplied: settings.camera.mfgMiscSettingsModel.applySettings()
            }
        }
    }
}
