import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the NUC Settings section: how corrections are made and used. Nothing has an effect until it is applied.
ModelBody {
    id: settings

    readonly property int _labelWidth: 196
    // Of the settings that the camera returns together, at least one is not 0 if they have been read.
    readonly property bool _hasSetup: camera ? camera.mfgNucSettingsModel.adMax > 0
                                               || camera.mfgNucSettingsModel.gainMax > 0 : false
    // Whether the operator has changed something since the last read and has not applied it.
    property bool _unapplied

    component Limit: NumberBox {
        Layout.preferredWidth: 72
        enabled: !settings.refreshing || activeFocus
    }

    // Two fields with an arrow between.
    component Limits: SettingRow {
        id: limits

        required property string quantity
        property alias minText: minBox.modelText
        property alias maxText: maxBox.modelText
        property real to: 0
        property int decimals: 0

        signal minEntered(number: real)
        signal maxEntered(number: real)

        labelWidth: settings._labelWidth
        heading: quantity + " Min & Max:"

        Limit {
            id: minBox

            name: limits.quantity + " Min"
            to: limits.to
            decimals: limits.decimals
            onEntered: number => {
                settings._unapplied = true
                limits.minEntered(number)
            }
        }

        GlyphLabel {
            text: Glyph.arrowRight
            color: Look.dimTextColor
        }

        Limit {
            id: maxBox

            name: limits.quantity + " Max"
            to: limits.to
            decimals: limits.decimals
            onEntered: number => {
                settings._unapplied = true
                limits.maxEntered(number)
            }
        }
    }

    component Switch: ToggleRow {
        labelWidth: settings._labelWidth
        enabled: !settings.refreshing
    }

    refreshing: camera ? camera.mfgNucSettingsModel.refreshing : false
    hasRefreshed: camera ? camera.mfgNucSettingsModel.hasRefreshed : false
    twoColumnWidth: 840
    onReadsChanged: _unapplied = false

    RowGroup {
        Layout.alignment: Qt.AlignTop

        ChoiceRow {
            labelWidth: settings._labelWidth
            enabled: !settings.refreshing || listOpen
            heading: "Type:"
            model: ["One Point", "Two Point", "Update Offset"]
            currentIndex: settings.camera ? settings.camera.mfgNucSettingsModel.selectedNucTypeIndex : -1
            onActivated: index => {
                settings._unapplied = true
                settings.camera.mfgNucSettingsModel.selectedNucTypeIndex = index
            }
        }

        ChoiceRow {
            labelWidth: settings._labelWidth
            enabled: !settings.refreshing || listOpen
            heading: "Source:"
            model: ["External", "Internal"]
            currentIndex: settings.camera ? settings.camera.mfgNucSettingsModel.selectedNucSourceIndex : -1
            onActivated: index => {
                settings._unapplied = true
                settings.camera.mfgNucSettingsModel.selectedNucSourceIndex = index
            }
        }

        Switch {
            text: "Detect Bad Pixels"
            checked: settings.camera ? settings.camera.mfgNucSettingsModel.detectBadPixels : false
            onToggled: {
                settings._unapplied = true
                settings.camera.mfgNucSettingsModel.detectBadPixels = checked
            }
        }

        Limits {
            quantity: "A/D"
            to: 16383
            minText: settings.text(settings._hasSetup ? settings.camera.mfgNucSettingsModel.adMin : NaN, 0)
            maxText: settings.text(settings._hasSetup ? settings.camera.mfgNucSettingsModel.adMax : NaN, 0)
            onMinEntered: counts => settings.camera.mfgNucSettingsModel.adMin = counts
            onMaxEntered: counts => settings.camera.mfgNucSettingsModel.adMax = counts
        }

        Limits {
            quantity: "Gain"
            to: 2
            decimals: 2
            minText: settings.text(settings._hasSetup ? settings.camera.mfgNucSettingsModel.gainMin : NaN, 2)
            maxText: settings.text(settings._hasSetup ? settings.camera.mfgNucSettingsModel.gainMax : NaN, 2)
            onMinEntered: limit => settings.camera.mfgNucSettingsModel.gainMin = limit
            onMaxEntered: limit => settings.camera.mfgNucSettingsModel.gainMax = limit
        }

        Switch {
            text: "Detect Twinkler Pixels"
            checked: settings.camera ? settings.camera.mfgNucSettingsModel.useTwinklerDetection : false
            onToggled: {
                settings._unapplied = true
                settings.camera.mfgNucSettingsModel.useTwinklerDetection = checked
            }
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop

        MfgNucRows {
            camera: settings.camera
            labelWidth: settings._labelWidth
            refreshing: settings.refreshing
            onEdited: settings._unapplied = true
        }

        SettingRow {
            labelWidth: settings._labelWidth

            WrappingButton {
                Layout.preferredWidth: 72
                enabled: !settings.refreshing
                primary: settings._unapplied
                text: "Apply"
                Accessible.name: "Apply NUC Settings"
                onClicked: {
                    settings.camera.mfgNucSettingsModel.applySettings()
                    settings._unapplied = false
                }
            }
        }
    }
}
