import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The frame on show, the range of the playback, and the buttons and the slider of the playback.
RowGroup {
    id: rows

    required property SsdTabModel model
    required property RecorderStatus status
    // Whether the page is visible and the camera connected.
    required property bool isShown

    // The path of the images after the command of the button that the pointer is over.
    readonly property int hoveredPath: play.hovered && play.enabled && !_plays ? FlowLights.PlaybackPath
                                                                               : FlowLights.NoPath
    readonly property bool _plays: status.state === SsdTabModel.PLAYING
    readonly property bool _mayPlay: status.hasVideo && !line.editing
    readonly property bool _maySkip: _mayPlay && (_plays || status.state === SsdTabModel.PAUSED)
    readonly property real _start: model ? model.startFrame : 0
    readonly property real _current: model ? model.currentFrame : 0
    readonly property real _end: model ? model.endFrame : 0

    enabled: status.usable

    SettingRow {
        id: frameRow

        //: The numbers of the first frame of the playback, of the frame on show and of the last frame
        heading: qsTr("Frame:")

        RangeLine {
            id: line

            name: frameRow.name
            //: Tool tip of the number of a frame
            toolTip: qsTr("Click to enter a frame number")
            mayEdit: visible && rows.isShown
            placeholder: rows.status.hasVideo ? "" : "--"
            minimum: rows._start
            maximum: rows._end
            value: rows._current
            onEntered: frame => rows.model.currentFrame = frame
        }

        GlyphButton {
            enabled: rows._mayPlay
            glyph: Glyph.pencil
            //: Tool tip: changes the first and the last frame of the playback
            toolTip: qsTr("Edit Playback Range")
            onClicked: rangeDialog.open()
        }
    }

    SettingRow {
        //: Heading of the buttons of the playback
        heading: qsTr("Playback:")

        CommandButton {
            enabled: rows._maySkip
            glyph: Glyph.stepBack
            //: Tool tip: shows the previous frame of a recording
            toolTip: qsTr("Previous Frame")
            onClicked: rows.model.skipBackwardToPreviousFrame()
        }

        CommandButton {
            id: play

            enabled: rows._mayPlay
            glyph: rows._plays ? Glyph.pause : Glyph.play
            //: Tool tip: pauses the playback of a recording
            toolTip: rows._plays ? qsTr("Pause")
                                 //: Tool tip: plays a recording
                                 : qsTr("Play")
            onClicked: rows._plays ? rows.model.pause() : rows.model.play()
        }

        CommandButton {
            enabled: rows._maySkip
            glyph: Glyph.stepForward
            //: Tool tip: shows the next frame of a recording
            toolTip: qsTr("Next Frame")
            onClicked: rows.model.skipForwardToNextFrame()
        }

        ValueSlider {
            Layout.fillWidth: true
            Layout.maximumWidth: 360
            //: Accessible name of a slider: the frame on show
            Accessible.name: qsTr("Current Frame")
            enabled: rows._maySkip
            wheelEnabled: true
            from: rows._start
            to: rows._end
            modelValue: rows._current
            // The model takes the number of each move, so the slider need not wait for a read.
            reads: 1
            onMoveTo: frame => rows.model.currentFrame = frame
        }
    }

    LazyLoader {
        id: rangeDialog

        file: "qrc:/zvt/dialogs/EditSsdPlaybackFrameRange.qml"
        initialProperties: ({
            tabModel: Qt.binding(() => rows.model),
            usable: Qt.binding(() => rows.status.connected && rows.status.usable && rows.status.hasVideo)
        })
    }
}
