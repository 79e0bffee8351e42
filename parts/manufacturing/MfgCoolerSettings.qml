import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the TE Cooler Settings section. The switch and the fields have no effect until they are applied.
ModelBody {
    id: settings

    // Each of the numbers may be 0, and may fail to be read.
    property bool _actualWasRead
    property bool _internalWasRead
    property bool _termsWereRead
    property bool _setpointWasRead
    // Whether the operator has changed something since the last read and has not applied it.
    property bool _unapplied

    function _textIf(wasRead: bool, number: real): string {
        return text(wasRead ? number : NaN, 2)
    }

    // A number of the cooler's control with its caption.
    component Variable: RowLayout {
        id: variable

        required property string caption
        property alias modelText: box.modelText

        signal entered(number: real)

        spacing: 6

        PlainLabel {
            Layout.preferredWidth: 56
            Accessible.ignored: true
            opacity: enabled ? 1 : Look.disabledOpacity
            text: variable.caption
            horizontalAlignment: Text.AlignRight
        }

        NumberBox {
            id: box

            implicitWidth: 80
            enabled: !settings.refreshing || activeFocus
            name: variable.caption
            from: -Infinity
            decimals: -1
            onEntered: number => {
                settings._unapplied = true
                variable.entered(number)
            }
        }
    }

    refreshing: camera ? camera.mfgCoolerSettingsModel.refreshing : false
    hasRefreshed: camera ? camera.mfgCoolerSettingsModel.hasRefreshed : false
    onReadsChanged: _unapplied = false
    Component.onCompleted: {
        _actualWasRead = hasRefreshed
        _internalWasRead = hasRefreshed
        _termsWereRead = hasRefreshed
        _setpointWasRead = hasRefreshed
    }

    Connections {
        target: settings.camera ? settings.camera.mfgCoolerSettingsModel : null
        // The signals of a read are those of the numbers that it has read, changed or not.
        function onActualTempChanged() {
            settings._actualWasRead = true
        }
        function onInternalTempChanged() {
            settings._internalWasRead = true
        }
        function onKPChanged() {
            settings._termsWereRead = true
        }
        function onSetpointChanged() {
            settings._setpointWasRead = true
        }
    }

    RowGroup {
        ValueRow {
            labelWidth: Look.wideLabelWidth
            heading: "Cooler Type:"
            value: settings.camera && settings.reads > 0 ? settings.camera.mfgCoolerSettingsModel.coolerType : ""
        }

        ValueRow {
            labelWidth: Look.wideLabelWidth
            heading: "Actual Temperature:"
            value: settings._textIf(settings._actualWasRead,
                                    settings.camera ? settings.camera.mfgCoolerSettingsModel.actualTemp : NaN)
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
                    settings._unapplied = true
                    settings.camera.mfgCoolerSettingsModel.coolerEnabled = checked
                }
            }
        }

        ValueRow {
            labelWidth: Look.wideLabelWidth
            heading: "Internal Temperature:"
            value: settings._textIf(settings._internalWasRead,
                                    settings.camera ? settings.camera.mfgCoolerSettingsModel.internalTemp : NaN)
        }

        SettingRow {
            labelWidth: Look.wideLabelWidth
            heading: "Setup Variables:"

            Flow {
                Layout.fillWidth: true
                spacing: 8

                Variable {
                    caption: "kP"
                    modelText: settings._textIf(settings._termsWereRead,
                                                settings.camera ? settings.camera.mfgCoolerSettingsModel.kP : NaN)
                    onEntered: term => settings.camera.mfgCoolerSettingsModel.kP = term
                }

                Variable {
                    caption: "kD"
                    modelText: settings._textIf(settings._termsWereRead,
                                                settings.camera ? settings.camera.mfgCoolerSettingsModel.kD : NaN)
                    onEntered: term => settings.camera.mfgCoolerSettingsModel.kD = term
                }

                Variable {
                    caption: "kOff"
                    modelText: settings._textIf(settings._termsWereRead,
                                                settings.camera ? settings.camera.mfgCoolerSettingsModel.kOff : NaN)
                    onEntered: term => settings.camera.mfgCoolerSettingsModel.kOff = term
                }

                Variable {
                    caption: "Setpoint"
                    modelText: settings._textIf(settings._setpointWasRead,
                                                settings.camera ? settings.camera.mfgCoolerSettingsModel.setpoint : NaN)
                    onEntered: celsius => settings.camera.mfgCoolerSettingsModel.setpoint = celsius
                }

                Variable {
                    caption: "kI"
                    modelText: settings._textIf(settings._termsWereRead,
                                                settings.camera ? settings.camera.mfgCoolerSettingsModel.kI : NaN)
                    onEntered: term => settings.camera.mfgCoolerSettingsModel.kI = term
                }
            }
        }

        SettingRow {
            labelWidth: Look.wideLabelWidth

            WrappingButton {
                Layout.preferredWidth: 72
                enabled: !settings.refreshing
                primary: settings._unapplied
                text: "Apply"
                Accessible.name: "Apply TE Cooler Settings"
                onClicked: {
                    settings.camera.mfgCoolerSettingsModel.applySettings()
                    settings._unapplied = false
                }
            }
        }
    }
}
