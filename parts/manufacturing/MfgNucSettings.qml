import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The body of the NUC Settings section: how corrections are made and used.
ApplyBody {
    id: settings

    readonly property int _labelWidth: 196

    // Two fields with an arrow between.
    component Limits: SettingRow {
        id: limits

        // For the names of the fields.
        required property string quantity
        // See ModelNumberBox. The camera returns both limits together.
        required property real minValue
        required property real maxValue
        required property var notifier
        property real to: 0
        property int decimals: 0

        signal minSent(number: real)
        signal maxSent(number: real)

        labelWidth: settings._labelWidth
        onMinSent: settings.unapplied = true
        onMaxSent: settings.unapplied = true

        ModelNumberBox {
            Layout.preferredWidth: 72
            section: settings
            name: limits.quantity + " Min"
            to: limits.to
            decimals: limits.decimals
            shownDecimals: limits.decimals
            value: limits.minValue
            notifier: limits.notifier
            onSent: number => limits.minSent(number)
        }

        GlyphLabel {
            text: Glyph.arrowRight
            color: Look.dimTextColor
        }

        ModelNumberBox {
            Layout.preferredWidth: 72
            section: settings
            name: limits.quantity + " Max"
            to: limits.to
            decimals: limits.decimals
            shownDecimals: limits.decimals
            value: limits.maxValue
            notifier: limits.notifier
            onSent: number => limits.maxSent(number)
        }
    }

    component Switch: ApplySwitch {
        section: settings
        labelWidth: settings._labelWidth
    }

    component IndexRow: ModelChoiceRow {
        section: settings
        labelWidth: settings._labelWidth
        unreadValue: -1
        onChosen: settings.unapplied = true
    }

    refreshing: camera ? camera.mfgNucSettingsModel.refreshing : false
    twoColumnWidth: 840

    RowGroup {
        Layout.alignment: Qt.AlignTop

        IndexRow {
            heading: "Type:"
            model: ["One Point", "Two Point", "Update Offset"]
            value: settings.camera ? settings.camera.mfgNucSettingsModel.selectedNucTypeIndex : -1
            notifier: settings.camera ? settings.camera.mfgNucSettingsModel.selectedNucTypeIndexChanged : null
            onChosen: index => settings.camera.mfgNucSettingsModel.selectedNucTypeIndex = index
        }

        IndexRow {
            heading: "Source:"
            model: ["External", "Internal"]
            value: settings.camera ? settings.camera.mfgNucSettingsModel.selectedNucSourceIndex : -1
            notifier: settings.camera ? settings.camera.mfgNucSettingsModel.selectedNucSourceIndexChanged : null
            onChosen: index => settings.camera.mfgNucSettingsModel.selectedNucSourceIndex = index
        }

        Switch {
            text: "Detect Bad Pixels"
            checked: settings.camera ? settings.camera.mfgNucSettingsModel.detectBadPixels : false
            onToggled: settings.camera.mfgNucSettingsModel.detectBadPixels = checked
        }

        Limits {
            heading: "A/D Min & Max:"
            quantity: "A/D"
            to: 16383
            minValue: settings.camera ? settings.camera.mfgNucSettingsModel.adMin : 0
            maxValue: settings.camera ? settings.camera.mfgNucSettingsModel.adMax : 0
            notifier: settings.camera ? settings.camera.mfgNucSettingsModel.nucSetupChanged : null
            onMinSent: counts => settings.camera.mfgNucSettingsModel.adMin = counts
            onMaxSent: counts => settings.camera.mfgNucSettingsModel.adMax = counts
        }

        Limits {
            heading: "Gain Min & Max:"
            quantity: "Gain"
            to: 2
            decimals: 2
            minValue: settings.camera ? settings.camera.mfgNucSettingsModel.gainMin : 0
            maxValue: settings.camera ? settings.camera.mfgNucSettingsModel.gainMax : 0
            notifier: settings.camera ? settings.camera.mfgNucSettingsModel.nucSetupChanged : null
            onMinSent: limit => settings.camera.mfgNucSettingsModel.gainMin = limit
            onMaxSent: limit => settings.camera.mfgNucSettingsModel.gainMax = limit
        }

        Switch {
            text: "Detect Twinkler Pixels"
            checked: settings.camera ? settings.camera.mfgNucSettingsModel.useTwinklerDetection : false
            onToggled: settings.camera.mfgNucSettingsModel.useTwinklerDetection = checked
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop

        MfgNucRows {
            section: settings
            labelWidth: settings._labelWidth
        }

        SettingRow {
            labelWidth: settings._labelWidth

            ApplyButton {
                section: settings
                Accessible.name: "Apply NUC Settings"
                onApplied: settings.camera.mfgNucSettingsModel.applySettings()
            }
        }
    }
}
