import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Flag Settings section. Each time it becomes visible, its model is read. The switch of the cooler only
// enables the rows below it; it does not reach the camera.
SectionBody {
    id: settings

    readonly property bool _hasRefreshed: camera ? camera.flagSettings.hasRefreshed : false
    readonly property bool _coolerEnabled: camera ? camera.flagSettings.coolerEnabled : false
    readonly property bool _accepted: camera ? camera.flagSettings.desiredSetWasValid : false
    // The values may be 0, so they are known to be read only after a read.
    property bool _wasRead

    function _text(temperature: real): string {
        return camera && _wasRead ? camera.safeConvertFloatToLocaleString(temperature, 2) : ""
    }

    // A read that the header of the section has started is not repeated.
    function _refreshIfVisible() {
        if (visible && camera)
            camera.flagSettings.refresh()
    }

    on_HasRefreshedChanged: {
        if (_hasRefreshed)
            _wasRead = true
    }
    onVisibleChanged: _refreshIfVisible()
    Component.onCompleted: {
        _wasRead = _hasRefreshed
        _refreshIfVisible()
    }

    RowGroup {
        ChoiceRow {
            //: Heading of the position of the flag
            heading: qsTr("State:")
            //: Position of the flag: out of view
            model: [qsTr("Stowed"),
                    //: Position of the flag
                    qsTr("In Field Of View")]
            currentIndex: settings.camera && settings._wasRead ? settings.camera.flagSettings.selectedFlagStateIndex : -1
            onActivated: index => settings.camera.flagSettings.selectedFlagStateIndex = index
        }

        RowGroup {
            visible: settings.camera ? settings.camera.cameraCapabilitiesModel.hasFlagCooler : false

            SettingRow {
                id: coolerRow

                //: Heading of the switch of the flag's cooler
                heading: qsTr("Cooler:")

                Toggle {
                    Accessible.name: coolerRow.name
                    checked: settings._coolerEnabled
                    // A read also changes `checked`, and must not be answered.
                    onCheckedChanged: {
                        if (settings.camera && checked !== settings.camera.flagSettings.coolerEnabled)
                            settings.camera.flagSettings.coolerEnabled = !settings.camera.flagSettings.coolerEnabled
                    }
                }
            }

            ValueRow {
                readonly property string temperature: settings._text(
                                                          settings.camera
                                                          ? settings.camera.flagSettings.currentFlagTemperature : 0)

                enabled: settings._coolerEnabled
                //: Heading of the temperature of the flag
                heading: qsTr("Temperature:")
                value: temperature !== "" ? temperature + " °C" : ""
            }

            SettingRow {
                id: desiredRow

                enabled: settings._coolerEnabled
                //: Heading of the temperature that the flag is to have
                heading: qsTr("Desired:")

                NumberBox {
                    id: desiredBox

                    name: desiredRow.name
                    //: Tool tip of a field: its number has not been sent to the camera, or the camera has refused it
                    toolTip: settings._accepted ? "" : qsTr("Not sent to the camera, or refused by it")
                    modelText: settings._text(settings.camera ? settings.camera.flagSettings.desiredFlagTemperature : 0)
                    from: -100
                    to: 100
                    decimals: 2
                    onEntered: number => settings.camera.flagSettings.desiredFlagTemperature = number
                    onEditingFinished: {
                        if (acceptable && !Fields.isDisabled(desiredBox))
                            settings.camera.flagSettings.desiredSetWasValid = true
                    }

                    Rectangle {
                        objectName: "refusalFrame"
                        visible: !settings._accepted
                        anchors.fill: parent
                        radius: Look.controlRadius
                        color: "transparent"
                        border.color: Look.tidepoolAccentRed
                    }
                }

                Unit {
                    opacity: enabled ? 1 : Look.disabledOpacity
                    text: "°C"
                }

                WrappingButton {
                    Layout.preferredWidth: 72
                    enabled: desiredBox.acceptable
                    //: Sends the temperature that the flag is to have to the camera
                    text: qsTr("Apply")
                    onClicked: settings.camera.flagSettings.applyDesiredFlagTemperature()
                }
            }
        }
    }
}
