import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Analog Settings section: voltages of the detector.
ModelBody {
    id: settings

    readonly property int _labelWidth: 164
    readonly property bool _hasSkimming: camera ? camera.cameraCapabilitiesModel.hasSkimming : false
    readonly property bool _skims: camera ? camera.advancedAnalogSettingsModel.skimmingEnabled : false

    // A field for a voltage between the camera's limits. It accepts none until these have been read.
    component VoltageBox: ModelNumberBox {
        required property real least
        required property real most
        readonly property bool _limited: least !== 0 || most !== 0

        section: settings
        from: _limited ? Numbers.ofFloat(least) : Infinity
        to: _limited ? Numbers.ofFloat(most) : -Infinity
        //: Tool tip of a field: the camera has not told which numbers it accepts
        refusal: _limited ? "" : qsTr("Limits not read")
    }

    refreshing: camera ? camera.advancedAnalogSettingsModel.refreshing : false

    RowGroup {
        SettingRow {
            id: offsetRow

            labelWidth: settings._labelWidth
            //: Heading of a field: a voltage of the detector in volts
            heading: qsTr("Global Analog Offset (v):")

            VoltageBox {
                name: offsetRow.name
                least: settings.camera ? settings.camera.advancedAnalogSettingsModel.globalOffsetLimitMin : 0
                most: settings.camera ? settings.camera.advancedAnalogSettingsModel.globalOffsetLimitMax : 0
                shownDecimals: 3
                value: settings.camera ? settings.camera.advancedAnalogSettingsModel.globalOffsetValue : 0
                notifier: settings.camera ? settings.camera.advancedAnalogSettingsModel.globalOffsetValueChanged : null
                onSent: volts => settings.camera.advancedAnalogSettingsModel.globalOffsetValue = volts
            }
        }

        SettingRow {
            id: biasRow

            labelWidth: settings._labelWidth
            //: Heading of a field: a voltage of the detector in millivolts
            heading: qsTr("Detector Bias (mv):")

            VoltageBox {
                name: biasRow.name
                least: settings.camera ? settings.camera.advancedAnalogSettingsModel.detectorBiasLimitMin : 0
                most: settings.camera ? settings.camera.advancedAnalogSettingsModel.detectorBiasLimitMax : 0
                shownDecimals: 2
                value: settings.camera ? settings.camera.advancedAnalogSettingsModel.detectorBiasValue : 0
                notifier: settings.camera ? settings.camera.advancedAnalogSettingsModel.detectorBiasValueChanged : null
                onSent: millivolts => settings.camera.advancedAnalogSettingsModel.detectorBiasValue = millivolts
            }
        }

        RowLayout {
            id: skimming

            visible: settings._hasSkimming
            spacing: 8

            WrappingCheckBox {
                Layout.leftMargin: settings._labelWidth - skimmingRow.labelWidth - skimming.spacing - width
                enabled: !settings.refreshing
                //: Accessible name of a check box: see "Skimming (v)"
                Accessible.name: qsTr("Enable Skimming")
                checked: settings._skims
                onToggled: {
                    if (settings.camera)
                        settings.camera.advancedAnalogSettingsModel.skimmingEnabled
                            = !settings.camera.advancedAnalogSettingsModel.skimmingEnabled
                }
            }

            SettingRow {
                id: skimmingRow

                labelWidth: 96
                headingEnabled: settings._skims
                //: Heading of a check box and a field: a voltage of the detector in volts
                heading: qsTr("Skimming (v):")

                VoltageBox {
                    usable: settings._skims
                    name: skimmingRow.name
                    least: settings.camera ? settings.camera.advancedAnalogSettingsModel.skimmingLimitMin : 0
                    most: settings.camera ? settings.camera.advancedAnalogSettingsModel.skimmingLimitMax : 0
                    shownDecimals: 3
                    value: settings.camera ? settings.camera.advancedAnalogSettingsModel.skimmingValue : 0
                    notifier: settings.camera ? settings.camera.advancedAnalogSettingsModel.skimmingValueChanged : null
                    onSent: volts => settings.camera.advancedAnalogSettingsModel.skimmingValue = volts
                }
            }
        }
    }
}
