import QtQuick
import QtQuick.Layouts
import zvt.rows

// The body of the Miscellaneous Settings section: the integrate output, the timestamp, and what the digital interfaces
// send.
ModelBody {
    id: settings

    readonly property int _labelWidth: 184
    readonly property bool _hasGigE: camera ? camera.advancedMiscSettingsModel.gigeHeaderModeAvailable : false
    readonly property bool _hasCameraLink: camera ? camera.advancedMiscSettingsModel.clHeaderModeAvailable : false
    readonly property bool _hasCoaXPress: camera ? camera.advancedMiscSettingsModel.cxpHeaderModeAvailable : false

    // What an interface sends; empty if the camera does not have the interface.
    component HeaderModeRow: ModelChoiceRow {
        required property bool available
        required property int mode

        section: settings
        labelWidth: settings._labelWidth
        usable: available
        //: What a digital interface sends
        model: [qsTr("Header And Image"),
                //: What a digital interface sends
                qsTr("Image Only")]
        value: available ? mode : -1
    }

    refreshing: camera ? camera.advancedMiscSettingsModel.refreshing : false

    RowGroup {
        Layout.alignment: Qt.AlignTop

        ModelChoiceRow {
            section: settings
            labelWidth: settings._labelWidth
            //: Polarity of the output that is active while the detector integrates
            heading: qsTr("Integrate Active Polarity:")
            //: Polarity of an output
            model: [qsTr("Active Low"),
                    //: Polarity of an output
                    qsTr("Active High")]
            value: settings.camera ? settings.camera.advancedMiscSettingsModel.selectedIntegrateActivePolarityIndex : 0
            notifier: settings.camera
                      ? settings.camera.advancedMiscSettingsModel.selectedIntegrateActivePolarityIndexChanged : null
            onChosen: index => settings.camera.advancedMiscSettingsModel.selectedIntegrateActivePolarityIndex = index
        }

        ModelChoiceRow {
            section: settings
            labelWidth: settings._labelWidth
            //: The event whose time is the timestamp of a frame
            heading: qsTr("Timestamp Latch:")
            //: The event whose time is the timestamp of a frame
            model: [qsTr("Frame Start"),
                    //: The event whose time is the timestamp of a frame
                    qsTr("Integration Start"),
                    //: The event whose time is the timestamp of a frame
                    qsTr("Integration End")]
            value: settings.camera ? settings.camera.advancedMiscSettingsModel.selectedIrigLatchIndex : 0
            notifier: settings.camera ? settings.camera.advancedMiscSettingsModel.selectedIrigLatchIndexChanged : null
            onChosen: index => settings.camera.advancedMiscSettingsModel.selectedIrigLatchIndex = index
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop

        HeaderModeRow {
            //: What this digital interface sends
            heading: qsTr("GigE Header Mode:")
            available: settings._hasGigE
            mode: settings.camera ? settings.camera.advancedMiscSettingsModel.gigeHeaderModeIndex : -1
            notifier: settings.camera ? settings.camera.advancedMiscSettingsModel.gigeHeaderModeIndexChanged : null
            //: What a digital interface sends
            model: [qsTr("Header And Image"),
                    //: What a digital interface sends
                    qsTr("Header Only"),
                    //: What a digital interface sends
                    qsTr("Image Only")]
            onChosen: index => settings.camera.advancedMiscSettingsModel.gigeHeaderModeIndex = index
        }

        HeaderModeRow {
            //: What this digital interface sends
            heading: qsTr("CameraLink Header Mode:")
            available: settings._hasCameraLink
            mode: settings.camera ? settings.camera.advancedMiscSettingsModel.clHeaderModeIndex : -1
            notifier: settings.camera ? settings.camera.advancedMiscSettingsModel.clHeaderModeIndexChanged : null
            onChosen: index => settings.camera.advancedMiscSettingsModel.clHeaderModeIndex = index
        }

        HeaderModeRow {
            //: What this digital interface sends
            heading: qsTr("CoaXPress Header Mode:")
            available: settings._hasCoaXPress
            mode: settings.camera ? settings.camera.advancedMiscSettingsModel.cxpHeaderModeIndex : -1
            notifier: settings.camera ? settings.camera.advancedMiscSettingsModel.cxpHeaderModeIndexChanged : null
            onChosen: index => settings.camera.advancedMiscSettingsModel.cxpHeaderModeIndex = index
        }
    }
}
