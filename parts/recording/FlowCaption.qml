import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The name of the camera and the state of its recorder.
Column {
    id: caption

    required property string cameraName
    // The SsdTabModel.SsdState.
    required property int recorderState
    // Whether the state has been read. Its text is empty before.
    required property bool wasRead

    readonly property string _stateText: {
        switch (recorderState) {
        case SsdTabModel.DISARMED:
            //: State of the recorder
            return qsTr("Disarmed")
        case SsdTabModel.ARMED:
            //: State of the recorder
            return qsTr("Armed - Ready To Record")
        case SsdTabModel.TRIGGERED:
            //: State of the recorder
            return qsTr("Recording...")
        case SsdTabModel.COMPLETE:
            //: State of the recorder: a recording is in the memory of the camera
            return qsTr("Complete")
        case SsdTabModel.PLAYING:
            //: State of the recorder
            return qsTr("Playing")
        case SsdTabModel.SAVING:
            //: State of the recorder
            return qsTr("Saving...")
        case SsdTabModel.PAUSED:
        case SsdTabModel.RECORD_PAUSED:
            //: State of the recorder: the playback or the recording is paused
            return qsTr("Paused")
        case SsdTabModel.FORMATTING:
            //: State of the recorder
            return qsTr("Formatting SSD...")
        case SsdTabModel.LOADING:
            //: State of the recorder
            return qsTr("Loading...")
        case SsdTabModel.MOVIE_LOADED:
            //: State of the recorder: a movie of the drive is in the memory of the camera
            return qsTr("Loaded")
        case SsdTabModel.ARMING:
            //: State of the recorder
            return qsTr("Arming")
        case SsdTabModel.REQUEST_AUTO_DOWNLOAD:
            //: State of the recorder: it asks the computer to download the recording
            return qsTr("Download")
        default:
            //: State of the recorder
            return qsTr("Unknown State")
        }
    }

    spacing: 2

    PlainLabel {
        width: parent.width
        text: caption.cameraName
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    PlainLabel {
        objectName: "recorderState"
        width: parent.width
        text: caption.wasRead ? caption._stateText : ""
        color: Look.strongTextColor
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
