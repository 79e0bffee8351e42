import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// What a trigger starts, and where it comes from. The camera decides which numbers it accepts; after a refused one, a
// field shows the camera's number again.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    // Whether the values are being read.
    required property bool busy

    readonly property SyncSettingsModel sync: camera ? camera.syncSettings : null
    readonly property int mode: sync ? sync.triggerMode : -1

    ChoiceRow {
        labelWidth: Look.wideLabelWidth
        enabled: !rows.busy || listOpen
        //: What a trigger starts
        heading: qsTr("Trigger Mode:")
        model: rows.sync ? rows.sync.triggerModeStrings : []
        // Depends on `model`, since a new list selects its first row.
        currentIndex: model && rows.sync ? rows.sync.triggerModeIndex : -1
        onActivated: index => rows.sync.triggerModeIndex = index
    }

    SettingRow {
        id: countRow

        labelWidth: Look.wideLabelWidth
        visible: rows.sync ? rows.sync.sequencingSupported : false
        enabled: rows.mode === SyncSettingsModel.TRIGGERED_SEQUENCE && (!rows.busy || countBox.activeFocus)
        //: The number of sequences that one trigger starts
        heading: qsTr("Sequence Count:")

        NumberBox {
            id: countBox

            name: countRow.name
            to: 4294967295
            modelText: rows.sync && rows.sync.sequenceCount !== 0 ? rows.sync.sequenceCount : ""
            onEntered: count => rows.sync.sequenceCount = count
        }
    }

    SettingRow {
        id: sourceRow

        labelWidth: Look.wideLabelWidth
        //: Where the trigger comes from
        heading: qsTr("Trigger Source:")

        Choice {
            enabled: !rows.busy || listOpen
            Accessible.name: sourceRow.name
            //: A source of the trigger
            model: [qsTr("Internal"),
                    //: A source of the trigger
                    qsTr("External"),
                    //: A source of the trigger: the button beside this list
                    qsTr("Software"),
                    //: A source of the trigger: a time of day
                    qsTr("Time")]
            currentIndex: rows.sync ? rows.sync.triggerSource : -1
            onActivated: index => rows.sync.triggerSource = index
        }

        WrappingButton {
            Layout.preferredWidth: 84
            //: Button: makes the next preset the active one
            text: rows.mode === SyncSettingsModel.TRIGGERED_PRESET_ADVANCE ? qsTr("Advance")
                                                                          //: Button: triggers once
                                                                          : qsTr("Trigger")
            onClicked: rows.sync.trigger()
        }

        WrappingButton {
            Layout.preferredWidth: 84
            //: Button: prepares a further trigger
            text: qsTr("Rearm")
            onClicked: rows.sync.rearm()
        }
    }

    SettingRow {
        id: rateRow

        labelWidth: Look.wideLabelWidth
        enabled: !rows.busy || rateBox.activeFocus
        //: The rate of the internal trigger in hertz
        heading: qsTr("Trigger Rate (Hz):")

        NumberBox {
            id: rateBox

            name: rateRow.name
            from: -Infinity
            decimals: -1
            modelText: rows.sync && rows.sync.triggerRate !== 0
                       ? rows.camera.safeConvertFloatToLocaleString(rows.sync.triggerRate, 2) : ""
            onEntered: hertz => rows.sync.triggerRate = hertz
        }
    }

    TriggerTimeRow {
        labelWidth: Look.wideLabelWidth
        sync: rows.sync
        busy: rows.busy
    }
}
