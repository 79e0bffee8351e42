import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The movie of a row of a batch: the number of the row, a bar that is red unless all settings of the row are valid, the
// number and the name of the movie, and a mark if another row has the same output name.
Item {
    id: input

    required property BatchDownloadEntry entry
    // The number of the row.
    required property int number
    required property BatchColumns columns

    // Edits of the times signal only `validTimeRange`.
    readonly property bool _isValid: entry ? entry.validTimeRange && entry.validAll : true
    readonly property bool _isDuplicate: entry ? entry.hasDuplicateOutputName : false

    component Cell: PlainLabel {
        height: input.height
        Accessible.ignored: true
        verticalAlignment: Text.AlignVCenter
    }

    implicitHeight: Look.rowHeight

    Cell {
        width: input.columns.numberWidth
        text: input.number
        horizontalAlignment: Text.AlignRight
    }

    Rectangle {
        id: validityBar

        objectName: "batchValidityBar"
        x: input.columns.barX
        width: 4
        height: parent.height
        color: input._isValid ? "transparent" : Look.errorFrameColor
        Accessible.ignored: input._isValid
        Accessible.role: Accessible.Graphic
        //: Accessible name: some setting of a movie is not valid; %1 is the number of a row
        Accessible.name: input._isValid ? "" : qsTr("Not Valid %1").arg(input.number)

        HoverHandler {
            margin: 4
            onHoveredChanged: Hint.show(validityBar, hovered && !input._isValid,
                                        input.entry && input.entry.validOutFile
                                        //: Tool tip
                                        ? qsTr("The end is before the start")
                                        //: Tool tip
                                        : qsTr("The output name is empty"))
        }
    }

    Cell {
        id: movieNumber

        x: input.columns.movieX
        text: input.entry ? input.entry.number : ""
        color: Look.strongTextColor
        font.weight: Font.DemiBold
    }

    Cell {
        id: fileLabel

        anchors.left: movieNumber.right
        anchors.leftMargin: 8
        anchors.right: duplicateMark.left
        anchors.rightMargin: 4
        text: input.entry ? input.entry.file : ""
        elide: Text.ElideRight

        HoverHandler {
            onHoveredChanged: Hint.show(fileLabel, hovered && fileLabel.truncated, fileLabel.text)
        }
    }

    GlyphLabel {
        id: duplicateMark

        anchors.right: parent.right
        width: 16
        height: parent.height
        visible: input._isDuplicate
        Accessible.ignored: false
        Accessible.role: Accessible.Graphic
        //: Accessible name: the output name is also that of another movie; %1 is the number of a row
        Accessible.name: qsTr("Duplicate %1").arg(input.number)
        text: Glyph.exclamation
        color: Look.errorFrameColor

        HoverHandler {
            onHoveredChanged: Hint.show(duplicateMark, hovered,
                                        //: Tool tip
                                        qsTr("Output filename is not unique for this batch."))
        }
    }
}
