import QtQuick
import zvt.look
import zvt.rows

// The body of the Lockin Settings section: the periodic signal at the lock-in input of the camera.
ModelBody {
    id: settings

    readonly property int _labelWidth: 216
    readonly property bool _hasRate: camera ? camera.advancedLockinSettingsModel.sampleRateIsSet : false

    refreshing: camera ? camera.advancedLockinSettingsModel.refreshing : false

    RowGroup {
        ModelChoiceRow {
            section: settings
            labelWidth: settings._labelWidth
            //: Heading of a list: how the lock-in input takes its signal
            heading: qsTr("Coupling:")
            //: Coupling of an input
            model: [qsTr("AC - Alternating Current"),
                    //: Coupling of an input
                    qsTr("DC - Direct Current")]
            value: settings.camera ? settings.camera.advancedLockinSettingsModel.selectedCouplingIndex : 0
            notifier: settings.camera ? settings.camera.advancedLockinSettingsModel.selectedCouplingIndexChanged : null
            onChosen: index => settings.camera.advancedLockinSettingsModel.selectedCouplingIndex = index
        }

        SettingRow {
            id: frequencyRow

            labelWidth: settings._labelWidth
            //: Heading of a field: about the frequency of the signal at the input
            heading: qsTr("Estimated Input Frequency (Hz):")

            ModelNumberBox {
                section: settings
                implicitWidth: 120
                name: frequencyRow.name
                to: Numbers.largestFloat
                shownDecimals: 3
                value: settings.camera ? settings.camera.advancedLockinSettingsModel.estInputFrequency : 0
                notifier: settings.camera ? settings.camera.advancedLockinSettingsModel.estInputFrequencyChanged : null
                onSent: hertz => settings.camera.advancedLockinSettingsModel.estInputFrequency = hertz
            }
        }

        ModelChoiceRow {
            section: settings
            labelWidth: settings._labelWidth
            //: Heading of a list of frequencies
            heading: settings._hasRate ? qsTr("Digital Filter (Hz):")
                     //: Heading of a list of fractions of the sample rate, which is not known
                     : qsTr("Digital Filter:")
            model: settings.camera ? settings.camera.advancedLockinSettingsModel.digitalFilterList : []
            value: settings.camera ? settings.camera.advancedLockinSettingsModel.selectedDigitalFilterIndex : 0
            notifier: settings.camera ? settings.camera.advancedLockinSettingsModel.selectedDigitalFilterIndexChanged
                                      : null
            onChosen: index => settings.camera.advancedLockinSettingsModel.selectedDigitalFilterIndex = index
        }

        ValueRow {
            labelWidth: settings._labelWidth
            //: Heading of the rate at which the camera samples the signal
            heading: qsTr("Sample Rate (Hz):")
            value: {
                if (settings.camera && settings._hasRate)
                    return settings.text(settings.camera.advancedLockinSettingsModel.sampleRate, 2)
                //: The camera has no sample rate
                return settings.reads > 0 ? qsTr("Not Set", "Sample Rate") : ""
            }
        }
    }
}
