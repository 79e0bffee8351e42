import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Digital Settings section: gain and offset of each preset, the camera's links, and the black-hot
// switch.
ModelBody {
    id: settings

    readonly property bool _hasCameraLink: camera ? camera.cameraCapabilitiesModel.hasCameraLinkMode : false
    readonly property bool _hasCoaXPress: camera ? camera.cameraCapabilitiesModel.hasCoaXPressLinksToUse : false
    readonly property bool _hasBlackHot: camera ? camera.advancedTabModel.blackHotAvailable : false

    component PresetBox: ModelNumberBox {
        Layout.preferredWidth: Look.numberColumnWidth
        section: settings
        decimals: Numbers.anyDecimals
    }

    component PresetRow: SettingRow {
        id: row

        required property real gain
        required property var gainNotifier
        required property real offset
        required property var offsetNotifier

        signal gainSent(gain: real)
        signal offsetSent(offset: real)

        PresetBox {
            name: row.name + " " + gainTitle.text
            from: settings.camera ? Numbers.ofFloat(settings.camera.advancedTabModel.gainMinValue) : 0
            to: settings.camera ? Numbers.ofFloat(settings.camera.advancedTabModel.gainMaxValue) : 0
            shownDecimals: 3
            value: row.gain
            notifier: row.gainNotifier
            onSent: gain => row.gainSent(gain)
        }

        PresetBox {
            name: row.name + " " + offsetTitle.text
            from: settings.camera ? settings.camera.advancedTabModel.offsetMinValue : 0
            to: settings.camera ? settings.camera.advancedTabModel.offsetMaxValue : 0
            shownDecimals: 1
            value: row.offset
            notifier: row.offsetNotifier
            onSent: offset => row.offsetSent(offset)
        }
    }

    refreshing: camera ? camera.advancedTabModel.refreshing : false

    RowGroup {
        Layout.alignment: Qt.AlignTop

        SettingRow {
            ColumnTitle {
                id: gainTitle

                //: Title of a column: factors of the counts
                text: qsTr("Digital Gain")
            }

            ColumnTitle {
                id: offsetTitle

                //: Title of a column: counts that are added
                text: qsTr("Digital Offset")
            }
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 0:")
            gain: settings.camera ? settings.camera.advancedTabModel.presetZeroGain : 0
            gainNotifier: settings.camera ? settings.camera.advancedTabModel.presetZeroGainChanged : null
            onGainSent: gain => settings.camera.advancedTabModel.presetZeroGain = gain
            offset: settings.camera ? settings.camera.advancedTabModel.presetZeroOffset : 0
            offsetNotifier: settings.camera ? settings.camera.advancedTabModel.presetZeroOffsetChanged : null
            onOffsetSent: offset => settings.camera.advancedTabModel.presetZeroOffset = offset
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 1:")
            gain: settings.camera ? settings.camera.advancedTabModel.presetOneGain : 0
            gainNotifier: settings.camera ? settings.camera.advancedTabModel.presetOneGainChanged : null
            onGainSent: gain => settings.camera.advancedTabModel.presetOneGain = gain
            offset: settings.camera ? settings.camera.advancedTabModel.presetOneOffset : 0
            offsetNotifier: settings.camera ? settings.camera.advancedTabModel.presetOneOffsetChanged : null
            onOffsetSent: offset => settings.camera.advancedTabModel.presetOneOffset = offset
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 2:")
            gain: settings.camera ? settings.camera.advancedTabModel.presetTwoGain : 0
            gainNotifier: settings.camera ? settings.camera.advancedTabModel.presetTwoGainChanged : null
            onGainSent: gain => settings.camera.advancedTabModel.presetTwoGain = gain
            offset: settings.camera ? settings.camera.advancedTabModel.presetTwoOffset : 0
            offsetNotifier: settings.camera ? settings.camera.advancedTabModel.presetTwoOffsetChanged : null
            onOffsetSent: offset => settings.camera.advancedTabModel.presetTwoOffset = offset
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 3:")
            gain: settings.camera ? settings.camera.advancedTabModel.presetThreeGain : 0
            gainNotifier: settings.camera ? settings.camera.advancedTabModel.presetThreeGainChanged : null
            onGainSent: gain => settings.camera.advancedTabModel.presetThreeGain = gain
            offset: settings.camera ? settings.camera.advancedTabModel.presetThreeOffset : 0
            offsetNotifier: settings.camera ? settings.camera.advancedTabModel.presetThreeOffsetChanged : null
            onOffsetSent: offset => settings.camera.advancedTabModel.presetThreeOffset = offset
        }
    }

    RowGroup {
        visible: settings._hasCameraLink || settings._hasCoaXPress || settings._hasBlackHot
        Layout.alignment: Qt.AlignTop

        ModelChoiceRow {
            section: settings
            visible: settings._hasCameraLink
            usable: settings.camera ? settings.camera.advancedTabModel.cameraLinkModeCanBeModified : false
            //: Mode of the digital link of this kind
            heading: qsTr("CameraLink Mode:")
            //: Mode of a digital link
            model: [qsTr("Base"),
                    //: Mode of a digital link
                    qsTr("Full")]
            unreadValue: -1
            value: settings.camera ? settings.camera.advancedTabModel.selectedCameraLinkModeIndex : -1
            notifier: settings.camera ? settings.camera.advancedTabModel.selectedCameraLinkModeIndexChanged : null
            onChosen: index => settings.camera.advancedTabModel.selectedCameraLinkModeIndex = index
        }

        ModelChoiceRow {
            section: settings
            visible: settings._hasCoaXPress
            usable: settings.camera ? settings.camera.advancedTabModel.coaXPressLinksCanBeModified : false
            //: Number of the digital links of this kind that are used
            heading: qsTr("CoaXPress Links:")
            model: settings.camera ? settings.camera.advancedTabModel.coaXPressLinksList.strings : []
            unreadValue: -1
            value: settings.camera ? settings.camera.advancedTabModel.selectedCoaXPressLinksIndex : -1
            notifier: settings.camera ? settings.camera.advancedTabModel.selectedCoaXPressLinksIndexChanged : null
            onChosen: index => settings.camera.advancedTabModel.selectedCoaXPressLinksIndex = index
        }

        SettingRow {
            visible: settings._hasBlackHot

            WrappingCheckBox {
                enabled: !settings.refreshing
                //: Check box: what is hot is black in the picture
                text: qsTr("Black Hot Mode")
                // Depends on `reads`, since a read does not signal an unchanged value, but replaces a refused choice.
                checked: settings.camera && settings.reads >= 0 ? settings.camera.advancedTabModel.blackHotEnabled
                                                                : false
                onToggled: {
                    if (settings.camera)
                        settings.camera.advancedTabModel.blackHotEnabled = checked
                }
            }
        }
    }
}
