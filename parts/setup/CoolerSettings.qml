import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Cooler Settings section. The switch and the setpoint have no effect until they are applied.
SectionBody {
    id: settings

    readonly property bool _hasRefreshed: camera ? camera.setupCoolerSettingsModel.hasRefreshed : false
    property bool _wasRead
    // Whether the operator has changed something since the last read and has not applied it.
    property bool _unapplied

    // The setpoint may be 0, so it is known to be read only after a read.
    function _updateRead() {
        if (_hasRefreshed)
            _wasRead = true
        _unapplied = false
    }

    // A temperature that has not been read is 0.
    function _temperatureText(temperature: real): string {
        return camera && temperature !== 0 ? camera.safeConvertFloatToLocaleString(temperature, 2) : ""
    }

    component ValueRow: SettingRow {
        id: row

        property string value

        labelWidth: Look.wideLabelWidth

        PlainLabel {
            Layout.minimumHeight: Look.rowHeight
            opacity: enabled ? 1 : Look.disabledOpacity
            text: row.value
            verticalAlignment: Text.AlignVCenter

            Accessible.name: row.name
            Accessible.description: row.value
        }
    }

    twoColumnWidth: 680
    rowSpacing: Look.rowSpacing
    on_HasRefreshedChanged: _updateRead()
    Component.onCompleted: _updateRead()

    ValueRow {
        //: Heading of the kind of cooler
        heading: qsTr("Cooler Type:")
        value: settings.camera && settings._wasRead ? settings.camera.setupCoolerSettingsModel.coolerType : ""
    }

    ValueRow {
        //: Heading of the temperature of what the cooler cools
        heading: qsTr("Actual Temperature:")
        value: settings._temperatureText(settings.camera ? settings.camera.setupCoolerSettingsModel.actualTemp : 0)
    }

    SettingRow {
        id: powerRow

        labelWidth: Look.wideLabelWidth
        //: Heading of the switch of the cooler's power
        heading: qsTr("Cooler Enabled:")

        Toggle {
            Accessible.name: powerRow.name
            checked: settings.camera ? settings.camera.setupCoolerSettingsModel.coolerEnabled : false
            onToggled: {
                settings.camera.setupCoolerSettingsModel.coolerEnabled = checked
                settings._unapplied = true
            }
        }
    }

    ValueRow {
        //: Heading of the temperature inside the camera
        heading: qsTr("Internal Temperature:")
        value: settings._temperatureText(settings.camera ? settings.camera.setupCoolerSettingsModel.internalTemp : 0)
    }

    SettingRow {
        id: setpointRow

        labelWidth: Look.wideLabelWidth
        //: Heading of the temperature that the cooler holds
        heading: qsTr("Setpoint:")

        NumberBox {
            name: setpointRow.name
            modelText: settings.camera && settings._wasRead
                       ? settings.camera.safeConvertFloatToLocaleString(
                             settings.camera.setupCoolerSettingsModel.setpoint, 2) : ""
            from: -Infinity
            decimals: -1
            onEntered: number => {
                settings.camera.setupCoolerSettingsModel.setpoint = number
                settings._unapplied = true
            }
        }

        WrappingButton {
            Layout.preferredWidth: 72
            primary: settings._unapplied
            //: Sends the settings of the cooler to the camera
            text: qsTr("Apply")
            onClicked: {
                settings.camera.setupCoolerSettingsModel.applySettings()
                settings._unapplied = false
            }
        }
    }
}
