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
    // Each of the numbers may be 0, and may fail to be read.
    property bool _actualWasRead
    property bool _internalWasRead
    property bool _setpointWasRead
    // Whether the operator has changed something since the last read and has not applied it.
    property bool _unapplied

    function _updateRead() {
        if (_hasRefreshed)
            _wasRead = true
        _unapplied = false
    }

    function _text(temperature: real, wasRead: bool): string {
        return camera && wasRead ? camera.safeConvertFloatToLocaleString(temperature, 2) : ""
    }

    twoColumnWidth: 680
    rowSpacing: Look.rowSpacing
    on_HasRefreshedChanged: _updateRead()
    Component.onCompleted: {
        _updateRead()
        _setpointWasRead = _hasRefreshed
    }

    Connections {
        target: settings.camera ? settings.camera.setupCoolerSettingsModel : null
        // The signals of a read or poll are those of the numbers that it has read, changed or not.
        function onActualTempChanged() {
            settings._actualWasRead = true
        }
        function onInternalTempChanged() {
            settings._internalWasRead = true
        }
        function onSetpointChanged() {
            settings._setpointWasRead = true
        }
    }

    ValueRow {
        labelWidth: Look.wideLabelWidth
        //: Heading of the kind of cooler
        heading: qsTr("Cooler Type:")
        value: settings.camera && settings._wasRead ? settings.camera.setupCoolerSettingsModel.coolerType : ""
    }

    ValueRow {
        labelWidth: Look.wideLabelWidth
        //: Heading of the temperature of what the cooler cools
        heading: qsTr("Actual Temperature:")
        value: settings._text(settings.camera ? settings.camera.setupCoolerSettingsModel.actualTemp : 0,
                              settings._actualWasRead)
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
        labelWidth: Look.wideLabelWidth
        //: Heading of the temperature inside the camera
        heading: qsTr("Internal Temperature:")
        value: settings._text(settings.camera ? settings.camera.setupCoolerSettingsModel.internalTemp : 0,
                              settings._internalWasRead)
    }

    SettingRow {
        id: setpointRow

        labelWidth: Look.wideLabelWidth
        //: Heading of the temperature that the cooler holds
        heading: qsTr("Setpoint:")

        NumberBox {
            name: setpointRow.name
            modelText: settings._text(settings.camera ? settings.camera.setupCoolerSettingsModel.setpoint : 0,
                                      settings._setpointWasRead)
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
