import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// Delay and polarity of the sync input, the trigger input and the sync output. Delays are in microseconds. The camera
// decides which delays it accepts; after a refused one, a field shows the camera's delay again.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    // Whether the values are being read.
    required property bool busy

    readonly property SyncSettingsModel sync: camera ? camera.syncSettings : null

    // A delay that has not been read is NaN.
    function _text(microseconds: real): string {
        return camera && !isNaN(microseconds) ? camera.safeConvertFloatToLocaleString(microseconds, 2) : ""
    }

    component DelayRow: SettingRow {
        id: delayRow

        property alias modelText: box.modelText

        signal entered(microseconds: real)

        labelWidth: Look.wideLabelWidth
        enabled: !rows.busy || box.activeFocus

        NumberBox {
            id: box

            Layout.preferredWidth: 100
            name: delayRow.name
            from: -Infinity
            decimals: -1
            onEntered: microseconds => delayRow.entered(microseconds)
        }
    }

    component PolarityRow: ChoiceRow {
        labelWidth: Look.wideLabelWidth
        enabled: !rows.busy || listOpen
        //: Polarity of a signal
        model: [qsTr("Active Low"),
                //: Polarity of a signal
                qsTr("Active High")]
    }

    component PresetDelay: CaptionedNumber {
        rowName: outRow.name
        boxWidth: 100
        from: -Infinity
        decimals: -1
    }

    DelayRow {
        //: In microseconds
        heading: qsTr("Sync In Delay (us):")
        modelText: rows._text(rows.sync ? rows.sync.syncInDelay : NaN)
        onEntered: microseconds => rows.sync.syncInDelay = microseconds
    }

    PolarityRow {
        //: Of the input for the frame sync
        heading: qsTr("Sync In Polarity:")
        currentIndex: rows.sync ? rows.sync.syncInPolarity : -1
        onActivated: index => rows.sync.syncInPolarity = index
    }

    DelayRow {
        //: In microseconds
        heading: qsTr("Trigger In Delay (us):")
        modelText: rows._text(rows.sync ? rows.sync.triggerInDelay : NaN)
        onEntered: microseconds => rows.sync.triggerInDelay = microseconds
    }

    PolarityRow {
        //: Of the input for the trigger
        heading: qsTr("Trigger In Polarity:")
        currentIndex: rows.sync ? rows.sync.triggerInPolarity : -1
        onActivated: index => rows.sync.triggerInPolarity = index
    }

    SettingRow {
        id: outRow

        labelWidth: Look.wideLabelWidth
        enabled: !rows.busy || first.inUse || second.inUse || third.inUse || fourth.inUse
        //: In microseconds; one for each preset
        heading: qsTr("Sync Out Delay (us):")

        GridLayout {
            columns: 2
            columnSpacing: 8
            rowSpacing: Look.rowSpacing

            PresetDelay {
                id: first

                //: Preset 0
                caption: qsTr("PS0:")
                modelText: rows._text(rows.sync ? rows.sync.syncOutDelayPS0 : NaN)
                onEntered: microseconds => rows.sync.syncOutDelayPS0 = microseconds
            }

            PresetDelay {
                id: second

                //: Preset 1
                caption: qsTr("PS1:")
                modelText: rows._text(rows.sync ? rows.sync.syncOutDelayPS1 : NaN)
                onEntered: microseconds => rows.sync.syncOutDelayPS1 = microseconds
            }

            PresetDelay {
                id: third

                //: Preset 2
                caption: qsTr("PS2:")
                modelText: rows._text(rows.sync ? rows.sync.syncOutDelayPS2 : NaN)
                onEntered: microseconds => rows.sync.syncOutDelayPS2 = microseconds
            }

            PresetDelay {
                id: fourth

                //: Preset 3
                caption: qsTr("PS3:")
                modelText: rows._text(rows.sync ? rows.sync.syncOutDelayPS3 : NaN)
                onEntered: microseconds => rows.sync.syncOutDelayPS3 = microseconds
            }
        }
    }

    ChoiceRow {
        labelWidth: Look.wideLabelWidth
        enabled: !rows.busy || listOpen
        //: What the sync output follows
        heading: qsTr("Sync Out Reference:")
        //: What the sync output follows
        model: [qsTr("Integration Start"),
                //: What the sync output follows
                qsTr("Frame Start"),
                //: What the sync output follows
                qsTr("Saturation Flag")]
        currentIndex: rows.sync ? rows.sync.syncOutSource : -1
        onActivated: index => rows.sync.syncOutSource = index
    }

    PolarityRow {
        //: Of the sync output
        heading: qsTr("Sync Out Polarity:")
        currentIndex: rows.sync ? rows.sync.syncOutPolarity : -1
        onActivated: index => rows.sync.syncOutPolarity = index
    }
}
