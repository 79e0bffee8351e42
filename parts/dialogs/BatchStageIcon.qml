import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// What is being done with a movie of a batch. Empty while the movie is only loaded.
Item {
    id: icon

    // A value of ESTATUS.
    required property int status

    readonly property bool _fetchesDropped: status === BatchDownloadEntry.STATUS_GRABBING_DROPPED_FRAMES

    function _name(): string {
        switch (status) {
        case BatchDownloadEntry.STATUS_FINDING_FRAME_RANGE:
            //: Stage of a batch: the frames of a range of times are looked up
            return qsTr("Finding Frame Range")
        case BatchDownloadEntry.STATUS_DOWNLOADING:
            //: Stage of a batch
            return qsTr("Downloading")
        case BatchDownloadEntry.STATUS_GRABBING_DROPPED_FRAMES:
            //: Stage of a batch: frames that were lost are transferred again
            return qsTr("Fetching Dropped Frames")
        case BatchDownloadEntry.STATUS_CONVERTING:
            //: Stage of a batch
            return qsTr("Converting")
        default:
            return ""
        }
    }

    function _glyph(): string {
        switch (status) {
        case BatchDownloadEntry.STATUS_FINDING_FRAME_RANGE:
            return Glyph.search
        case BatchDownloadEntry.STATUS_DOWNLOADING:
        case BatchDownloadEntry.STATUS_GRABBING_DROPPED_FRAMES:
            return Glyph.download
        case BatchDownloadEntry.STATUS_CONVERTING:
            return Glyph.convert
        default:
            return ""
        }
    }

    implicitWidth: 20
    implicitHeight: 20
    Accessible.role: Accessible.Graphic
    Accessible.name: _name()

    GlyphLabel {
        objectName: "stageGlyph"
        anchors.fill: parent
        text: icon._glyph()
        color: icon._fetchesDropped ? Look.droppedFramesColor : Look.strongTextColor
    }

    HoverHandler {
        onHoveredChanged: Hint.show(icon, hovered, icon.Accessible.name)
    }
}
