import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// Edits the first and the last frame of the playback, and the frame on show. The camera gets them when the dialog is
// accepted.
InformationDialog {
    id: dialog

    required property SsdTabModel tabModel
    // Whether the playback can be used. The dialog stays open when this changes, but cannot be accepted.
    property bool usable: true

    readonly property bool _acceptable: startRow.acceptable && currentRow.acceptable && endRow.acceptable
    readonly property real _lastFrame: tabModel ? tabModel.totalFramesInFile - 1 : -1
    property real _start
    property real _current
    property real _end

    function _confirm() {
        if (_acceptable && usable)
            accept()
    }

    //: Title of a dialog
    title: qsTr("Edit Playback Range")
    fullWidth: 360
    initialFocus: startRow.field
    onAboutToShow: {
        _start = tabModel.startFrame
        _current = tabModel.currentFrame
        _end = tabModel.endFrame
        for (const row of [startRow, currentRow, endRow])
            row.field.revert()
        startRow.field.selectAll()
    }
    onAccepted: {
        tabModel.startFrame = _start
        tabModel.currentFrame = _current
        tabModel.endFrame = _end
    }

    component FrameRow: SettingRow {
        id: row

        property alias from: box.from
        property alias to: box.to
        property alias modelText: box.modelText
        readonly property alias field: box
        readonly property alias acceptable: box.acceptable

        signal entered(frame: real)

        labelWidth: Look.wideLabelWidth

        NumberBox {
            id: box

            Layout.fillWidth: true
            name: row.name
            // The range depends on the other fields.
            marked: !acceptable
            onEntered: frame => row.entered(frame)
            onConfirmed: dialog._confirm()
        }
    }

    contentItem: ColumnLayout {
        spacing: Look.rowSpacing

        FrameRow {
            id: startRow

            //: The first frame of the playback
            heading: qsTr("Start:")
            modelText: dialog._start
            to: dialog._end - 1
            onEntered: frame => dialog._start = frame
        }

        FrameRow {
            id: currentRow

            //: The frame on show
            heading: qsTr("Current:")
            modelText: dialog._current
            from: dialog._start
            to: dialog._end
            onEntered: frame => dialog._current = frame
        }

        FrameRow {
            id: endRow

            //: The last frame of the playback
            heading: qsTr("End:")
            modelText: dialog._end
            from: dialog._start
            to: dialog._lastFrame
            onEntered: frame => dialog._end = frame
        }

        SettingRow {
            labelWidth: Look.wideLabelWidth
            //: The numbers of the frames of the recording
            heading: qsTr("Frame Number Range:")

            PlainLabel {
                text: "0 - " + dialog._lastFrame
                color: dialog._acceptable ? Look.textColor : Look.errorTextColor
                font.bold: !dialog._acceptable
            }
        }
    }
    buttons: [
        DialogButton {
            enabled: dialog._acceptable && dialog.usable
            primary: true
            //: Applies the entered frames
            text: qsTr("OK")
            onClicked: dialog.accept()
        },
        DialogButton {
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
