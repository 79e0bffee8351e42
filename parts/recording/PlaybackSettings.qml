import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The record mode, the name of the recording, and its playback.
RowGroup {
    id: settings

    required property ZvtCameraModel camera
    required property SsdTabModel model
    required property RecorderStatus status
    // Whether the page is visible and the camera connected.
    required property bool isShown
    // Whether the values have been read.
    required property bool wasRead

    readonly property alias rateAcceptable: rateBox.acceptable
    readonly property alias filenameAcceptable: filenameBox.acceptable
    readonly property alias hoveredPath: transport.hoveredPath

    readonly property bool _loops: model ? model.loopPlayback : false

    // Sends the shown rate, also if it was not edited, unless it is not acceptable.
    function commitRate() {
        if (!rateBox.acceptable)
            return
        const rate = rateBox.number
        rateBox.revert()
        model.playbackRateInHertz = rate
    }

    function _rateText(rate: real): string {
        return camera ? camera.safeConvertFloatToLocaleString(rate, 1) : ""
    }

    ChoiceRow {
        visible: settings.status.hasModes
        enabled: settings.status.usable
        //: Where the camera records to
        heading: qsTr("Record Mode:")
        //: A record mode: to the camera's memory
        model: [qsTr("To Camera RAM"),
                //: A record mode: to the solid-state drive of the camera
                qsTr("To Camera SSD")]
        currentIndex: model && settings.model ? settings.model.recordMode : -1
        onActivated: index => settings.model.recordMode = index
    }

    SettingRow {
        id: typeRow

        visible: settings.status.hasModes
        enabled: settings.status.usable
        //: What ends a recording
        heading: qsTr("Record Type:")

        Choice {
            Layout.rightMargin: 12
            Accessible.name: typeRow.name
            //: What ends a recording: the number of frames
            model: [qsTr("Num Frames"),
                    //: What ends a recording: its duration
                    qsTr("Duration"),
                    //: What ends a recording: a command
                    qsTr("Start Stop")]
            currentIndex: model && settings.model ? settings.model.recordType : -1
            onActivated: index => settings.model.recordType = index
        }

        Toggle {
            //: A switch: an input signal of the camera gates the recording
            text: qsTr("Gated record")
            checked: settings.model ? settings.model.recordGated : false
            onToggled: settings.model.recordGated = checked
        }
    }

    SettingRow {
        id: filenameRow

        enabled: settings.status.canInteract
        //: The name under which a recording is saved to the solid-state drive
        heading: qsTr("SSD Filename:")

        FilenameBox {
            id: filenameBox

            Layout.fillWidth: true
            Layout.maximumWidth: 360
            name: filenameRow.name
            modelText: settings.wasRead && settings.model ? settings.model.filename : ""
            onTextEntered: text => settings.model.filename = text
        }
    }

    SettingRow {
        id: rateRow

        enabled: settings.status.usable
        //: Frames per second
        heading: qsTr("Playback Rate (Hz):")

        NumberBox {
            id: rateBox

            name: rateRow.name
            decimals: 1
            from: 0.0001
            to: settings.model ? settings.model.maxPlaybackRateInHertz : 0
            marked: modelText !== "" && !acceptable
            modelText: settings.wasRead && settings.model ? settings._rateText(settings.model.playbackRateInHertz) : ""
            //: Tool tip of a field; %1 is a rate, %2 and %3 are the width and the height of the image in pixels
            toolTip: settings.model ? qsTr("Maximum: %1 Hz @ %2x%3").arg(settings.model.maxPlaybackRateInHertz)
                                      .arg(settings.model.windowWidth).arg(settings.model.windowHeight) : ""
            onEntered: rate => settings.model.playbackRateInHertz = rate
        }

        GlyphButton {
            glyph: Glyph.loop
            highlighted: settings._loops
            Accessible.checkable: true
            Accessible.checked: highlighted
            //: Tool tip: whether the playback starts again at its end
            toolTip: qsTr("Toggle Looping")
            onClicked: settings.model.loopPlayback = !settings.model.loopPlayback
        }
    }

    TransportRows {
        id: transport

        model: settings.model
        isShown: settings.isShown
        status: settings.status
    }
}
