import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// A row of the list of a batch: a movie, the name of its file, and the range to be downloaded, on the color of its
// status. The view uses a row again for another entry: a text that was typed but not entered is discarded when the row
// leaves the view, and when a run begins.
FocusScope {
    id: row

    required property int index
    required property BatchDownloadEntry item
    required property BatchDownloadModel batch
    // Whether Tab stops at the controls of this row.
    required property bool inTabChain
    required property BatchColumns columns

    // The controls between which the keys for other rows move.
    enum Stop {
        Output,
        Range,
        Start,
        End,
        Remove
    }

    readonly property int _number: index + 1
    readonly property bool _downloading: batch ? batch.downloading : false
    readonly property bool _usable: !_downloading && !_leaving
    readonly property int _status: item ? item.status : BatchDownloadEntry.STATUS_NOT_STARTED
    // The entry to be removed when the row has faded out, or null.
    property BatchDownloadEntry _leaving: null

    // The row has faded out, so its entry can be removed.
    signal removed(entry: BatchDownloadEntry, hadFocus: bool)

    // Gives a control the keyboard focus; the output name if the row does not have the control.
    function focusStop(stop: int) {
        const wanted = _control(stop)
        const control = wanted ? wanted : outputBox
        control.forceActiveFocus(Qt.TabFocusReason)
    }

    // The control with the keyboard focus.
    function focusedStop(): int {
        for (const stop of [BatchRow.Range, BatchRow.Start, BatchRow.End, BatchRow.Remove]) {
            const control = _control(stop)
            if (control && control.activeFocus)
                return stop
        }
        return BatchRow.Output
    }

    function _control(stop: int): Item {
        switch (stop) {
        case BatchRow.Range:
            return range.typeBox
        case BatchRow.Start:
            return range.fields ? range.fields.startBox : null
        case BatchRow.End:
            return range.fields ? range.fields.endBox : null
        case BatchRow.Remove:
            return removeButton
        default:
            return outputBox
        }
    }

    function _revert() {
        outputBox.revert()
        range.revert()
    }

    // Shows the row in full again: the model refuses the removal if a run has begun meanwhile, and the view uses the row
    // for another entry.
    function _endLeaving() {
        const entry = _leaving
        const hadFocus = activeFocus
        // Otherwise the button would take the focus again before the row is removed.
        focus = false
        _leaving = null
        height = undefined
        opacity = 1
        removed(entry, hadFocus)
    }

    implicitHeight: columns.rowHeight
    clip: _leaving !== null

    Accessible.role: Accessible.ListItem
    Accessible.name: item ? item.file : ""

    ListView.onPooled: {
        // A field that loses the focus enters an acceptable text.
        focus = false
        _revert()
        if (_leaving)
            _endLeaving()
    }
    on_DownloadingChanged: {
        if (!_downloading)
            return
        _revert()
        // Otherwise the list gives it the focus that is meant for the list itself.
        focus = false
    }

    BatchBackground {
        id: back

        anchors.fill: parent
        anchors.bottomMargin: 1
        status: row._status
        progress: row.item ? row.item.progress : 0
        downloading: row._downloading
    }

    Item {
        y: 5

        BatchInput {
            width: row.columns.outputX - row.columns.spacing
            columns: row.columns
            entry: row.item
            number: row._number
        }

        BatchNameBox {
            id: outputBox

            x: row.columns.outputX
            width: row.columns.outputWidth
            enabled: row._usable
            activeFocusOnTab: row.inTabChain
            entry: row.item
            //: Accessible name of a field: the name of a file to be written; %1 is the number of a row
            name: qsTr("Output %1").arg(row._number)
            onTextEntered: row.batch.checkAndSetDuplicateOutputs()
        }

        BatchRange {
            id: range

            x: row.columns.rangeX
            y: row.columns.rangeY
            width: row.columns.rangeWidth
            enabled: row._usable
            entry: row.item
            number: row._number
            inTabChain: row.inTabChain
        }

        Loader {
            x: row.columns.stageX
            y: 4
            active: back.running
            sourceComponent: BatchStageIcon {
                status: row._status
            }
        }

        BatchDownloadProgressItemIcon {
            x: row.columns.statusX
            y: 4
            status: row._status
        }

        GlyphButton {
            id: removeButton

            x: row.columns.removeX
            enabled: row._usable
            activeFocusOnTab: row.inTabChain
            glyph: Glyph.cross
            //: Tool tip: takes a movie from a batch
            toolTip: qsTr("Remove")
            //: Accessible name; %1 is the number of a row
            Accessible.name: qsTr("Remove %1").arg(row._number)
            onClicked: row._leaving = row.item
        }
    }

    Loader {
        active: row._leaving !== null
        sourceComponent: FadeAndShrinkAnimation {
            target: row
            running: true
            onFinished: row._endLeaving()
        }
    }
}
