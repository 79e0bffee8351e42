import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// Which part of the recording is downloaded: a range of frames, all of it, or a range of times. When the dialog is
// accepted, saveTo() starts the download.
InformationDialog {
    id: dialog

    required property SsdTabModel model
    // Whether the recording can be downloaded. The dialog stays open when this changes, but neither can it be accepted
    // nor does saveTo() start a download.
    required property bool usable

    readonly property bool _byFrames: rangeBox.currentIndex === 0
    readonly property bool _byTimes: rangeBox.currentIndex === 2
    readonly property bool _isOrdered: !(firstRow.number > lastRow.number)
    readonly property bool _acceptable: usable
                                        && (!_byFrames || (firstRow.acceptable && lastRow.acceptable && _isOrdered))
                                        && (!_byTimes || (startRow.acceptable && endRow.acceptable))
    property real _first
    property real _last

    // Downloads to the file with this URL.
    function saveTo(file: string) {
        if (!model || !usable)
            return
        if (_byFrames)
            model.downloadFrameRange(file, firstRow.number, lastRow.number)
        else if (_byTimes)
            model.downloadTimeRange(file, startRow.text, endRow.text)
        else
            model.downloadEntireMovie(file)
    }

    function _confirm() {
        if (_acceptable)
            accept()
    }

    //: Title of a dialog
    title: qsTr("Download Settings")
    fullWidth: 400
    initialFocus: rangeBox
    onAboutToShow: {
        _first = model.startFrame
        _last = model.endFrame
        rangeBox.currentIndex = 0
        firstRow.revert()
        lastRow.revert()
        startRow.revert()
        endRow.revert()
    }

    component FrameRow: SettingRow {
        id: frameRow

        property alias modelText: frameBox.modelText
        readonly property alias acceptable: frameBox.acceptable
        readonly property alias number: frameBox.number

        signal entered(frame: real)

        function revert() {
            frameBox.revert()
        }

        visible: dialog._byFrames

        NumberBox {
            id: frameBox

            Layout.fillWidth: true
            name: frameRow.name
            to: 4294967295
            marked: !dialog._isOrdered
            //: Tool tip of the fields of a range
            toolTip: dialog._isOrdered ? "" : qsTr("The end is before the start")
            onEntered: frame => frameRow.entered(frame)
            onConfirmed: dialog._confirm()
        }
    }

    component TimeRow: SettingRow {
        id: timeRow

        readonly property string firstTime: "001:00:00:00.000000"
        property string time: firstTime
        readonly property alias acceptable: timeBox.acceptable
        readonly property alias text: timeBox.text

        function revert() {
            time = firstTime
            timeBox.revert()
        }

        visible: dialog._byTimes

        IrigBox {
            id: timeBox

            Layout.fillWidth: true
            name: timeRow.name
            modelText: timeRow.time
            onTextEntered: text => timeRow.time = text
            onConfirmed: dialog._confirm()
        }
    }

    contentItem: ColumnLayout {
        spacing: Look.rowSpacing

        SettingRow {
            id: rangeRow

            //: Which part of a recording is downloaded
            heading: qsTr("Range:")

            Choice {
                id: rangeBox

                Layout.fillWidth: true
                Accessible.name: rangeRow.name
                //: Which part of a recording is downloaded: from one frame to another
                model: [qsTr("Frame Range"),
                        //: Which part of a recording is downloaded: all of it
                        qsTr("Entire Movie"),
                        //: Which part of a recording is downloaded: from one time to another; IRIG is a time code
                        qsTr("IRIG Range")]
            }
        }

        FrameRow {
            id: firstRow

            //: The number of the first frame that is downloaded
            heading: qsTr("Start Frame:")
            modelText: dialog._first
            onEntered: frame => dialog._first = frame
        }

        FrameRow {
            id: lastRow

            //: The number of the last frame that is downloaded
            heading: qsTr("End Frame:")
            modelText: dialog._last
            onEntered: frame => dialog._last = frame
        }

        TimeRow {
            id: startRow

            //: From which time on frames are downloaded
            heading: qsTr("Start Time:")
        }

        TimeRow {
            id: endRow

            //: Up to which time frames are downloaded
            heading: qsTr("End Time:")
        }

        // Keeps the height of the dialog.
        Item {
            visible: !dialog._byFrames && !dialog._byTimes
            implicitHeight: 2 * Look.rowHeight + Look.rowSpacing
        }
    }
    buttons: [
        DialogButton {
            enabled: dialog._acceptable
            primary: true
            //: Chooses the file for a download
            text: qsTr("Save")
            onClicked: dialog._confirm()
        },
        DialogButton {
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
