import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The fields of a batch entry with a range of frames. The end field also takes the number of frames, which is one more
// than the number of the last frame.
BatchFields {
    id: fields

    required property BatchDownloadEntry entry

    readonly property real _frames: entry ? entry.totalFrames : 0
    readonly property bool _isOrdered: entry ? entry.validFrameRange : true

    component FrameBox: NumberBox {
        width: fields.fieldWidth
        activeFocusOnTab: fields.inTabChain
        marked: !fields._isOrdered
        toolTip: fields._isOrdered ? "" : fields.orderText
    }

    startBox: startFrameBox
    endBox: endFrameBox

    FrameBox {
        id: startFrameBox

        x: fields.startX
        name: fields.startName
        to: fields._frames - 1
        modelText: fields.entry ? String(fields.entry.startFrame) : ""
        onEntered: frame => fields.entry.startFrame = frame
    }

    FrameBox {
        id: endFrameBox

        x: fields.endX
        name: fields.endName
        to: fields._frames
        modelText: fields.entry ? String(fields.entry.endFrame) : ""
        onEntered: frame => fields.entry.endFrame = frame
    }
}
