import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import com.kestrin.hlxcamui 1.0
import "../../hlxcamui/controls"
import zvt.dialogs
import zvt.look
import zvt.rows

// Downloads any number of movies from the drive of the camera in one run. Only its buttons close it. The list is kept
// when it is closed, but not after a run.
InformationDialog {
    id: dialog

    required property SsdTabModel ssdTabModel

    readonly property BatchDownloadModel _batch: ssdTabModel ? ssdTabModel.batchDownload : null
    readonly property bool _downloading: _batch ? _batch.downloading : false
    readonly property bool _hasEntries: _batch ? _batch.entries.size > 0 : false
    // Whether a run has ended since the dialog was opened.
    property bool _hasRun
    // How the last run was started: by mouse or keyboard.
    property int _focusReason: Qt.OtherFocusReason

    function _start() {
        if (_batch.checkAndSetDuplicateOutputs())
            duplicatesMessage.open()
        else
            _batch.start()
    }

    // Not a button, which the key that started the run would press again. The button that started it is disabled now.
    function _followRun() {
        if (_downloading) {
            _focusReason = startButton.focusReason
            table.list.forceActiveFocus(_focusReason)
        } else if (table.list.activeFocus) {
            closeButton.forceActiveFocus(_focusReason)
        }
    }

    function _cancelOrClose() {
        if (_downloading) {
            _batch.cancel()
            return
        }
        if (_batch)
            _batch.resetAllStatusOnEntries()
        reject()
    }

    //: Title of a dialog
    title: qsTr("Batch Download")
    fullWidth: parent ? parent.width - 32 : 0
    height: parent ? parent.height - 32 : 0
    closesByEscape: false
    initialFocus: toolBar.addButton
    onAboutToShow: DialogWindowResizer.pushMinSize(Qt.size(1200, 720))
    onAboutToHide: {
        DialogWindowResizer.popMinSize()
        if (_hasRun && _batch)
            _batch.removeAll()
        _hasRun = false
    }
    on_DownloadingChanged: _followRun()

    contentItem: ColumnLayout {
        spacing: Look.groupSpacing

        BatchToolBar {
            id: toolBar

            batch: dialog._batch
            onFolderRequested: folderDialog.open()
            onAddRequested: movieDialog.open()
            onRemoveAllRequested: removeAllQuestion.open()
            onCalibrationRequested: calibrationDialog.open()
        }

        BatchTable {
            id: table

            Layout.fillWidth: true
            Layout.fillHeight: true
            batch: dialog._batch
            onEmptied: toolBar.addButton.forceActiveFocus(Qt.TabFocusReason)
        }
    }
    buttons: [
        BatchCounter {
            rightPadding: 12
            // Leaves room for the numbers and the buttons.
            barWidth: Math.min(320, dialog.width - 390)
            batch: dialog._batch
        },
        DialogButton {
            id: startButton

            enabled: dialog._hasEntries && !dialog._downloading
            primary: true
            //: Begins the download of all movies of a batch
            text: qsTr("Start")
            onClicked: dialog._start()
        },
        DialogButton {
            id: closeButton

            //: Stops the download of a batch
            text: dialog._downloading ? qsTr("Cancel")
                                      //: Closes a dialog
                                      : qsTr("Close")
            onClicked: dialog._cancelOrClose()
        }
    ]

    Connections {
        target: dialog._batch
        function onDoneDownloading() {
            dialog._hasRun = true
            resultsDialog.open()
        }
    }

    LazyLoader {
        id: folderDialog

        WidgetFileDialog {
            //: Title of a dialog: the folder for the files of a batch
            title: qsTr("Select Output Directory")
            selectFolder: true
            folder: dialog._batch ? dialog._batch.outputDir : ""
            onAccepted: dialog._batch.outputDir = String(fileUrl)
        }
    }

    LazyLoader {
        id: calibrationDialog

        WidgetFileDialog {
            //: Title of a file dialog
            title: qsTr("Select Calibration File")
            //: File types
            nameFilters: [qsTr("Supported Files") + " (*.cal *.xcalpk *.xnucpk)",
                          //: File types
                          qsTr("Calibration Files") + " (*.cal)",
                          //: File types
                          qsTr("Calibration Packs") + " (*.xcalpk)",
                          //: File types
                          qsTr("NUC Packs") + " (*.xnucpk)",
                          //: File types
                          qsTr("All Files") + " (*.*)"]
            folder: shortcuts.documents
            onAccepted: dialog._batch.calFilename = String(fileUrl)
        }
    }

    LazyLoader {
        id: movieDialog

        ViewOrLoadSsdFilesDialog {
            ssdTabModel: dialog.ssdTabModel
            selectMultiple: true
            onAccepted: {
                for (const movie of selectedMovies)
                    dialog._batch.add(movie)
            }
        }
    }

    LazyLoader {
        id: removeAllQuestion

        ConfirmationDialog {
            //: Title of a question
            title: qsTr("Confirm")
            //: A question
            text: qsTr("Remove all files from the batch?")
            //: Answer to a question
            confirmButtonText: qsTr("Remove All")
            //: Answer to a question
            denyButtonText: qsTr("Keep Files")
            destructive: true
            onAccepted: dialog._batch.removeAll()
        }
    }

    LazyLoader {
        id: duplicatesMessage

        GenericMessageDialog {
            //: Title of a message
            title: qsTr("Batch Download")
            //: A message
            text: qsTr("All output filenames must be unique.")
        }
    }

    LazyLoader {
        id: resultsDialog

        InformationDialog {
            //: Title of a dialog
            title: qsTr("Batch Download Results")
            //: Closes a dialog
            buttonText: qsTr("OK")
            primary: true
            fullWidth: 320

            contentItem: BatchResults {
                batch: dialog._batch
            }
        }
    }
}
