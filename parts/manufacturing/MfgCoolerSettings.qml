import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The body of the TE Cooler Settings section.
ApplyBody {
    id: settings

    // A number of the cooler's control with its caption.
    component Variable: RowLayout {
        id: variable

        required property string caption
        // See ModelNumberBox.
        required property real value
        required property var notifier

        signal sent(number: real)

        spacing: 6

        PlainLabel {
            Accessible.ignored: true
            opacity: enabled ? 1 : Look.disabledOpacity
            text: variable.caption
        }

        ModelNumberBox {
            section: settings
            implicitWidth: 72
            Layout.rightMargin: 8
            name: variable.caption
            from: -Numbers.largestFloat
            to: Numbers.largestFloat
            shownDecimals: 2
            value: variable.value
            notifier: variable.notifier
            onSent: number => {
                settings.unapplied = true
                variable.sent(number)
            }
        }
    }

    // A temperature, empty until it has been read.
    component Temperature: ValueRow {
        id: temperature

        required property real celsius
        required property var notifier

        labelWidth: Look.wideLabelWidth
        value: fact.wasRead ? settings.text(celsius, 2) : ""

        ReadFact {
            id: fact

            notifier: temperature.notifier
            differs: temperature.celsius !== 0
        }
    }

    refreshing: camera ? camera.mfgCoolerSettingsModel.refreshing : false

    RowGroup {
        ValueRow {
            labelWidth: Look.wideLabelWidth
            heading: "Cooler Type:"
            value: settings.camera ? settings.camera.mfgCoolerSettingsModel.coolerType : ""
        }

        Temperature {
            heading: "Actual Temperature:"
            celsius: settings.camera ? settings.camera.mfgCoolerSettingsModel.actualTemp : 0
            notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.actualTempChanged : null
        }

        SettingRow {
            id: powerRow

            labelWidth: Look.wideLabelWidth
            heading: "Cooler Enabled:"

            Toggle {
                enabled: !settings.refreshing
                Accessible.name: powerRow.name
                checked: settings.camera ? settings.camera.mfgCoolerSettingsModel.coolerEnabled : false
                onToggled: {
                    settings.unapplied = true
                    settings.camera.mfgCoolerSettingsModel.coolerEnabled = checked
                }
            }
        }

        Temperature {
            heading: "Internal Temperature:"
            celsius: settings.camera ? settings.camera.mfgCoolerSettingsModel.internalTemp : 0
            notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.internalTempChanged : null
        }

        SettingRow {
            labelWidth: Look.wideLabelWidth
            heading: "Setup Variables:"

            Flow {
                Layout.fillWidth: true
                spacing: 8

                Variable {
                    caption: "kP"
                    value: settings.camera ? settings.camera.mfgCoolerSettingsModel.kP : 0
                    notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.kPChanged : null
                    onSent: term => settings.camera.mfgCoolerSettingsModel.kP = term
                }

                Variable {
                    caption: "kD"
                    value: settings.camera ? settings.camera.mfgCoolerSettingsModel.kD : 0
                    notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.kDChanged : null
                    onSent: term => settings.camera.mfgCoolerSettingsModel.kD = term
                }

                Variable {
                    caption: "kOff"
                    value: settings.camera ? settings.camera.mfgCoolerSettingsModel.kOff : 0
                    notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.kOffChanged : null
                    onSent: term => settings.camera.mfgCoolerSettingsModel.kOff = term
                }

                Variable {
                    caption: "Setpoint"
                    value: settings.camera ? settings.camera.mfgCoolerSettingsModel.setpoint : 0
                    notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.setpointChanged : null
                    onSent: temperature => settings.camera.mfgCoolerSettingsModel.setpoint = temperature
                }

                Variable {
                    caption: "kI"
                    value: settings.camera ? settings.camera.mfgCoolerSettingsModel.kI : 0
                    notifier: settings.camera ? settings.camera.mfgCoolerSettingsModel.kIChanged : null
                    onSent: term => settings.camera.mfgCoolerSettingsModel.kI = term
                }
            }
        }

        SettingRow {
            labelWidth: Look.wideLabelWidth

            ApplyButton {
                section: settings
                Accessible.name: "Apply TE Cooler Settings"
                onApplied: settings.camera.mfgCoolerSettingsModel.applySettings()
            }
        }
    }
}
