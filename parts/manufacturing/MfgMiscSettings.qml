import QtQuick
import QtQuick.Layouts
import zvt
import zvt.rows

// The body of the Miscellaneous Settings section. Nothing has an effect until it is applied.
ModelBody {
    id: settings

    readonly property int _labelWidth: 160
    // Each of the numbers may be 0, and may fail to be read.
    property bool _thresholdWasRead
    property bool _shiftWasRead
    // Whether the operator has changed something since the last read and has not applied it.
    property bool _unapplied

    component Field: NumberRow {
        labelWidth: settings._labelWidth
        enabled: !settings.refreshing || inUse
    }

    refreshing: camera ? camera.mfgMiscSettingsModel.refreshing : false
    hasRefreshed: camera ? camera.mfgMiscSettingsModel.hasRefreshed : false
    onReadsChanged: _unapplied = false
    Component.onCompleted: {
        _thresholdWasRead = hasRefreshed
        _shiftWasRead = hasRefreshed
    }

    Connections {
        target: settings.camera ? settings.camera.mfgMiscSettingsModel : null
        // The signals of a read are those of the numbers that it has read, changed or not.
        function onDdeThresholdChanged() {
            settings._thresholdWasRead = true
        }
        function onFpaClockPhaseShiftChanged() {
            settings._shiftWasRead = true
        }
    }

    RowGroup {
        Field {
            heading: "DDE Threshold:"
            to: 16383
            modelText: settings.text(settings.camera && settings._thresholdWasRead
                                     ? settings.camera.mfgMiscSettingsModel.ddeThreshold : NaN, 0)
            onEntered: threshold => {
                settings._unapplied = true
                settings.camera.mfgMiscSettingsModel.ddeThreshold = threshold
            }
        }

        Field {
            heading: "FPA Clock Phase Shift:"
            to: 100000000
            modelText: settings.text(settings.camera && settings._shiftWasRead
                                     ? settings.camera.mfgMiscSettingsModel.fpaClockPhaseShift : NaN, 0)
            onEntered: shift => {
                settings._unapplied = true
                settings.camera.mfgMiscSettingsModel.fpaClockPhaseShift = shift
            }
        }

        SettingRow {
            labelWidth: settings._labelWidth

            WrappingButton {
                Layout.preferredWidth: 72
                enabled: !settings.refreshing
                primary: settings._unapplied
                text: "Apply"
                Accessible.name: "Apply Miscellaneous Settings"
                onClicked: {
                    settings.camera.mfgMiscSettingsModel.applySettings()
                    settings._unapplied = false
                }
            }
        }
    }
}
