import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// Which part of a movie of a batch is downloaded: all of it, or from one frame or time to another. The fields exist only
// for the last two.
Item {
    id: range

    required property BatchDownloadEntry entry
    // The number of the row, for the accessible names.
    required property int number
    // Whether Tab stops at the controls.
    required property bool inTabChain

    readonly property alias typeBox: rangeBox
    readonly property BatchFields fields: fieldsLoader.item as BatchFields
    readonly property int _type: entry ? entry.rangeType : BatchDownloadEntry.RANGE_ENTIRE_FILE

    function revert() {
        if (fields)
            fields.revert()
    }

    implicitHeight: Look.rowHeight

    Choice {
        id: rangeBox

        width: 116
        activeFocusOnTab: range.inTabChain
        //: Accessible name of a box: which part of a movie is downloaded; %1 is the number of a row
        Accessible.name: qsTr("Range %1").arg(range.number)
        //: A range: all frames of a movie
        model: [qsTr("Entire File"),
                //: A range: between two numbers of frames
                qsTr("Frames"),
                //: A range: between two times
                qsTr("Time")]
        currentIndex: model ? range._type : -1
        onActivated: index => range.entry.rangeType = index
    }

    Loader {
        id: fieldsLoader

        x: 128
        active: range._type !== BatchDownloadEntry.RANGE_ENTIRE_FILE
        sourceComponent: range._type === BatchDownloadEntry.RANGE_FRAMES ? frameFields : timeFields
    }

    Component {
        id: frameFields

        BatchFrameFields {
            entry: range.entry
            number: range.number
            inTabChain: range.inTabChain
        }
    }

    Component {
        id: timeFields

        BatchTimeFields {
            entry: range.entry
            number: range.number
            inTabChain: range.inTabChain
        }
    }
}
