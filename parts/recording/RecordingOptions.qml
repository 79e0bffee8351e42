import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// The length of a recording, what follows it, and the formatting of the drive.
RowGroup {
    id: options

    required property SsdTabModel model
    required property RecorderStatus status
    // Whether the values have been read.
    required property bool wasRead

    // Whether the fields that count in the present mode and type hold acceptable values.
    readonly property bool acceptable: (status.toDisk || pretriggerRow.acceptable)
                                       && (!_byFrames || framesRow.acceptable)
                                       && (!_byDuration || durationBox.acceptable)

    readonly property bool _byFrames: model ? model.recordType === SsdTabModel.TYPE_NUM_FRAMES : false
    readonly property bool _byDuration: model ? model.recordType === SsdTabModel.TYPE_DURATION : false
    readonly property bool _mayFormat: status.connected && status.canInteract && (model ? model.drivePresent : false)
                                       && (status.state === SsdTabModel.DISARMED
                                           || status.state === SsdTabModel.COMPLETE)

    // Sends the shown numbers of frames, also if they were not edited. A text that is not acceptable is not sent: a
    // field that does not count in the present mode and type does not prevent arming.
    function commitFrames() {
        const frames = framesRow.acceptableNumber()
        const pretrigger = pretriggerRow.acceptableNumber()
        framesRow.commit(frames)
        pretriggerRow.commit(pretrigger)
    }

    // A field for a number of frames up to a limit.
    component FramesRow: SettingRow {
        id: framesRow

        readonly property alias acceptable: framesField.acceptable
        property alias from: framesField.from
        property alias to: framesField.to
        property alias modelText: framesField.modelText

        signal entered(frames: real)

        // The number in the field; NaN if it is not acceptable.
        function acceptableNumber(): real {
            return acceptable ? framesField.number : NaN
        }

        // Sends a number, unless it is NaN, in place of the typed text.
        function commit(frames: real) {
            if (isNaN(frames))
                return
            framesField.revert()
            entered(frames)
        }

        enabled: !options.status.armed

        NumberBox {
            id: framesField

            name: framesRow.name
            marked: modelText !== "" && !acceptable
            //: Tool tip of a field; %1 is a number of frames
            toolTip: qsTr("Maximum: %1").arg(Numbers.limitText(to))
            onEntered: frames => framesRow.entered(frames)
        }
    }

    enabled: status.canInteract

    FramesRow {
        id: framesRow

        visible: options._byFrames
        //: The length of a recording
        heading: qsTr("Frames To Record:")
        from: 1
        to: options.model ? options.model.maxFramesToRecord : 0
        modelText: options.wasRead && options.model ? options.model.framesToRecord : ""
        onEntered: frames => options.model.framesToRecord = frames
    }

    // Before the first read the type is that by the number of frames, so this row is hidden.
    SettingRow {
        id: durationRow

        visible: options._byDuration
        enabled: !options.status.armed
        //: The length of a recording
        heading: qsTr("Duration To Record:")

        DurationBox {
            id: durationBox

            name: durationRow.name
            model: options.model
        }

        // The colour of the field alone would not be noticed by every operator.
        GlyphLabel {
            id: warning

            visible: durationBox.tooLong
            text: Glyph.warning
            color: Look.kestrinSecondaryGold

            HoverHandler {
                onHoveredChanged: Hint.show(warning, hovered, durationBox.toolTip)
            }
        }
    }

    FramesRow {
        id: pretriggerRow

        enabled: !options.status.armed && !options.status.toDisk
        //: How many frames from before the trigger the recording keeps
        heading: qsTr("Pretrigger Frames:")
        to: options.model ? options.model.pretriggerMaxFramesToRecord : 0
        modelText: options.wasRead && options.model ? options.model.pretriggerFramesToRecord : ""
        onEntered: frames => options.model.pretriggerFramesToRecord = frames
    }

    AfterRecordingRows {
        model: options.model
        status: options.status
    }

    WrappingButton {
        Layout.topMargin: 8
        enabled: options._mayFormat
        //: Button: deletes all recordings from the camera's solid-state drive
        text: qsTr("Format SSD")
        onClicked: formatDialog.open()
    }

    LazyLoader {
        id: formatDialog

        file: "qrc:/zvt/dialogs/ConfirmationDialog.qml"
        initialProperties: ({
            //: Title of a question
            title: qsTr("Format SSD"),
            //: A question; SSD is the solid-state drive of the camera
            text: qsTr("Erase all data from the SSD?"),
            destructive: true
        })
    }

    Connections {
        target: formatDialog.item
        function onAccepted() {
            // The state may have changed, or the camera disconnected, while the dialog was open.
            if (options._mayFormat)
                options.model.format()
        }
    }
}
