import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The body of the Sync Settings section. While its model is read, the controls are disabled, except for the buttons and
// for the control that the operator is using.
SectionBody {
    id: settings

    readonly property SyncSettingsModel sync: camera ? camera.syncSettings : null
    readonly property bool busy: sync ? sync.refreshing : false

    RowGroup {
        Layout.alignment: Qt.AlignTop

        ChoiceRow {
            labelWidth: Look.wideLabelWidth
            enabled: !settings.busy || listOpen
            //: The source of the signal that starts each frame
            heading: qsTr("Sync Source:")
            model: settings.sync ? settings.sync.syncSourceStrings : []
            currentIndex: settings.sync ? settings.sync.syncSource : -1
            onActivated: index => settings.sync.syncSource = index
        }

        ChoiceRow {
            labelWidth: Look.wideLabelWidth
            enabled: !settings.busy || listOpen
            //: What a frame sync starts
            heading: qsTr("Frame Sync Starts:")
            //: What a frame sync starts
            model: [qsTr("Integration"),
                    //: What a frame sync starts
                    qsTr("Readout")]
            currentIndex: settings.sync ? settings.sync.syncMode : -1
            onActivated: index => settings.sync.syncMode = index
        }

        TriggerRows {
            camera: settings.camera
            busy: settings.busy
        }
    }

    SyncSignalRows {
        Layout.alignment: Qt.AlignTop
        camera: settings.camera
        busy: settings.busy
    }
}
