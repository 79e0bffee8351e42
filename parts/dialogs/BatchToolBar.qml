import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// What a batch writes and where, and the buttons that change its list. All of it is disabled during a run.
ColumnLayout {
    id: bar

    required property BatchDownloadModel batch

    readonly property alias addButton: addFilesButton
    readonly property bool _converts: batch ? batch.convertToQdseq : false
    readonly property bool _hasEntries: batch ? batch.entries.size > 0 : false
    readonly property bool _usesCalibration: batch ? batch.addCalFile : false

    signal folderRequested
    signal addRequested
    signal removeAllRequested
    signal calibrationRequested

    component PathBox: TextBox {
        Layout.fillWidth: true
        readOnly: true
        toolTip: modelText
    }

    component FileButton: GlyphButton {
        glyph: Glyph.load
    }

    enabled: batch ? !batch.downloading : false
    spacing: Look.rowSpacing

    RowLayout {
        spacing: 8

        PlainLabel {
            id: folderLabel

            Accessible.ignored: true
            opacity: enabled ? 1 : Look.disabledOpacity
            //: The folder of the files that are downloaded
            text: qsTr("Output Directory:")
        }

        PathBox {
            name: folderLabel.text.replace(":", "")
            modelText: bar.batch ? bar.batch.urlToLocalFile(bar.batch.outputDir) : ""
        }

        FileButton {
            //: Tool tip
            toolTip: qsTr("Choose Output Directory")
            onClicked: bar.folderRequested()
        }

        WrappingButton {
            id: addFilesButton

            Layout.leftMargin: 16
            //: Adds movies to a batch
            text: qsTr("Add File(s)")
            onClicked: bar.addRequested()
        }

        WrappingButton {
            enabled: bar._hasEntries
            //: Takes all movies from a batch
            text: qsTr("Remove All Files")
            onClicked: bar.removeAllRequested()
        }
    }

    GridLayout {
        columns: bar.width < 960 ? 2 : 4
        columnSpacing: columns === 2 ? bar.spacing : 20
        rowSpacing: bar.spacing

        Toggle {
            //: A switch; QDSEQ is a file format
            text: qsTr("Convert to QDSEQ files after downloading")
            checked: bar.batch ? bar.batch.convertToQdseq : false
            onToggled: bar.batch.convertToQdseq = checked
        }

        Toggle {
            enabled: bar._converts
            //: A switch; RQS is the format of downloaded files
            text: qsTr("Keep RQS file after converting")
            checked: bar.batch ? bar.batch.keepRqsFile : false
            onToggled: bar.batch.keepRqsFile = checked
        }

        Toggle {
            enabled: bar._converts
            //: A switch: the converted files get a calibration of the operator
            text: qsTr("Add user calibration")
            checked: bar._usesCalibration
            onToggled: bar.batch.addCalFile = checked
        }

        RowLayout {
            enabled: bar._usesCalibration
            spacing: 8

            PathBox {
                //: Accessible name of a field
                name: qsTr("Calibration File")
                modelText: bar.batch ? bar.batch.urlToLocalFile(bar.batch.calFilename) : ""
            }

            FileButton {
                //: Tool tip
                toolTip: qsTr("Choose Calibration File")
                onClicked: bar.calibrationRequested()
            }
        }
    }
}
