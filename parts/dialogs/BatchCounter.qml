import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The number of movies in a batch; during a run its progress, and which of the movies is being downloaded.
Row {
    id: counter

    required property BatchDownloadModel batch
    required property real barWidth

    readonly property bool _downloading: batch ? batch.downloading : false
    readonly property int _files: batch ? batch.entries.size : 0
    // -1 until the run has begun with the first movie.
    readonly property int _current: batch ? batch.currentEntryFileNumber : -1

    height: Look.rowHeight
    spacing: 12

    Loader {
        anchors.verticalCenter: parent.verticalCenter
        active: counter._downloading
        sourceComponent: ProgressLine {
            width: counter.barWidth
            //: A progress bar
            Accessible.name: qsTr("Batch Progress")
            value: counter.batch ? counter.batch.progress : 0
        }
    }

    PlainLabel {
        height: parent.height
        //: Accessible name: the number of files of a batch
        Accessible.name: qsTr("Files")
        text: !counter._downloading ? counter._files : counter._current > 0 ? counter._current + " / " + counter._files : ""
        verticalAlignment: Text.AlignVCenter
    }

    GlyphLabel {
        height: parent.height
        visible: !counter._downloading
        text: Glyph.file
        color: Look.dimTextColor
    }
}
