import QtQuick
import "../../hlxcamui/controls"
import zvt
import zvt.dialogs
import zvt.look
import zvt.rows

// The list of the corrections (NUCs) in the camera, with what can be done with them. The mode "load" chooses a
// correction to load, the modes "save" and "new" a name to store one under; the mode "manage" neither. Every mode but
// "new" has buttons that rename, delete, upload and download corrections. `camera.nucList` must be read before the
// control is shown.
NucChooser {
    id: control

    property alias nameToSetIndexFromWhenNucListModelisLoaded: control.wantedName

    // The operator has chosen a correction, or a name for one.
    signal accepted

    // Selects the row of the wanted name; no row if there is none.
    function setCurrentIndexByNucName() {
        select(wantedName)
        wantedName = ""
    }

    function clearCurrentIndex() {
        wantedName = ""
        currentIndex = -1
    }

    function showInvalidNameErrorDialog() {
        invalidNameDialog.open()
    }

    // Asks whether an existing correction may be replaced. "Yes" accepts in the mode "save", uploads the chosen file in
    // the mode "upload", and otherwise calls `acceptFunction`.
    function showOverwritePromptDialog(isFactory: bool, mode: string, acceptFunction: var) {
        const question = overwriteDialog.instance()
        question.isFactory = isFactory
        question.mode = mode
        question.acceptFunction = acceptFunction
        question.open()
    }

    function _saveOrLoad() {
        if (nucName === "" || refreshing)
            return
        const list = camera.nucList
        if (mode !== "save")
            accepted()
        else if (list.guessNucSize() >= list.freeSpace)
            noSpaceDialog.open()
        else if (!list.nucNameValid(nucName))
            showInvalidNameErrorDialog()
        else if (list.nucExists(nucName))
            showOverwritePromptDialog(list.isFactoryNuc(nucName), "save", null)
        else
            accepted()
    }

    function _checkUpload(file: string) {
        const list = camera.nucList
        const name = decodeURIComponent(file.slice(file.lastIndexOf("/") + 1)).replace(/\.[^.]*$/, "")
        if (list.localFileSize(file) >= list.freeSpace)
            noSpaceDialog.open()
        else if (list.nucExists(name))
            showOverwritePromptDialog(list.isFactoryNuc(name), "upload", null)
        else
            _upload()
    }

    function _upload() {
        camera.nucList.uploadNuc(String(uploadFileDialog.instance().fileUrl))
    }

    function _showInfo(row: int) {
        const info = camera.nucList.infoAt(row)
        if (!info)
            return
        infoDialog.instance().model = info
        infoDialog.open()
    }

    function _renameOrDelete(question: LazyLoader) {
        question.instance().nucName = selected
        question.open()
    }

    // The camera may refuse to rename or delete it.
    function _rename(oldName: string, newName: string) {
        camera.nucList.renameNuc(oldName, newName)
        if (select(oldName))
            return
        select(newName)
        nucName = newName
    }

    function _delete(name: string) {
        camera.nucList.deleteNuc(name)
        if (!select(name))
            nucName = ""
    }

    component NucFileDialog: WidgetFileDialog {
        //: Title of a file dialog
        title: qsTr("Select NUC File")
        //: File types
        nameFilters: [qsTr("NUC files (*.nuc)"),
                      //: File types
                      qsTr("All files (*)")]
        folder: shortcuts.documents
    }

    onConfirmed: _saveOrLoad()
    onInfoRequested: row => _showInfo(row)
    onRenameRequested: _renameOrDelete(renameDialog)
    onDeleteRequested: _renameOrDelete(deleteDialog)
    onUploadRequested: uploadFileDialog.open()
    onDownloadRequested: {
        downloadFileDialog.instance().defaultName = selected
        downloadFileDialog.open()
    }

    Connections {
        target: control.camera ? control.camera.nucList : null
        // The wizard starts no transfers. The dialog reports those that fail.
        enabled: control.mode !== "new"
        function onTransferringChanged() {
            const list = control.camera.nucList
            if (!list.transferring && !list.transferOk)
                transferFailedDialog.open()
        }
    }

    LazyLoader {
        id: uploadFileDialog

        NucFileDialog {
            onAccepted: control._checkUpload(String(fileUrl))
        }
    }

    LazyLoader {
        id: downloadFileDialog

        NucFileDialog {
            selectExisting: false
            onAccepted: control.camera.nucList.downloadNuc(control.nucName, String(fileUrl))
        }
    }

    LazyLoader {
        id: infoDialog

        file: "qrc:/zvt/dialogs/NucInfoDialog.qml"
    }

    LazyLoader {
        id: renameDialog

        InformationDialog {
            id: question

            property string nucName

            function _confirm() {
                if (!control.camera.nucList.nucNameValid(names.newName)) {
                    control.showInvalidNameErrorDialog()
                    return
                }
                control._rename(nucName, names.newName)
                accept()
            }

            //: Title of a dialog
            title: qsTr("Rename NUC")
            fullWidth: 400
            initialFocus: names.firstField
            onAboutToShow: names.firstField.revert()

            contentItem: RenameFields {
                id: names

                oldName: question.nucName
                maximumBytes: Fields.longestNucName
                onConfirmed: question._confirm()
            }
            buttons: [
                DialogButton {
                    primary: true
                    //: Changes the name of a correction
                    text: qsTr("Rename")
                    onClicked: question._confirm()
                },
                DialogButton {
                    //: Closes a dialog and changes nothing
                    text: qsTr("Cancel")
                    onClicked: question.reject()
                }
            ]
        }
    }

    LazyLoader {
        id: deleteDialog

        ConfirmationDialog {
            property string nucName
            property bool isFactory

            //: Title of a question
            title: qsTr("Delete NUC")
            //: %1 is the name of a correction
            text: isFactory ? qsTr("Are you sure you want to delete %1?\n\nIt is a factory NUC and deleting it may "
                                   + "break your factory calibration.").arg(nucName)
                            //: %1 is the name of a correction
                            : qsTr("Are you sure you want to delete %1?").arg(nucName)
            //: Deletes a correction
            confirmButtonText: qsTr("Delete")
            //: Closes a dialog and changes nothing
            denyButtonText: qsTr("Cancel")
            destructive: true
            onAccepted: control._delete(nucName)
        }
    }

    LazyLoader {
        id: overwriteDialog

        ConfirmationDialog {
            property bool isFactory
            property string mode
            property var acceptFunction

            //: Title of a question
            title: qsTr("Warning")
            //: A question
            text: isFactory ? qsTr("That NUC already exists and is a factory NUC.\n\nDo you want to overwrite it?")
                            //: A question
                            : qsTr("That NUC already exists.\n\nDo you want to overwrite it?")
            destructive: true
            onAccepted: {
                if (mode === "save")
                    control.accepted()
                else if (mode === "upload")
                    control._upload()
                else
                    acceptFunction()
            }
        }
    }

    component ErrorDialog: GenericMessageDialog {
        //: Title of a message
        title: qsTr("Error")
    }

    LazyLoader {
        id: invalidNameDialog

        ErrorDialog {
            //: A message
            text: qsTr("NUC name is not valid. NUC names cannot contain:\n   / \\ : \" * ? < > |\nmust have at least "
                       + "one nonspace character and cannot start with a space character.")
        }
    }

    LazyLoader {
        id: noSpaceDialog

        ErrorDialog {
            //: A message
            text: qsTr("There is not enough free space on the camera to save the NUC.\nPlease backup and/or delete "
                       + "existing NUCs to free up space.")
        }
    }

    LazyLoader {
        id: transferFailedDialog

        ErrorDialog {
            readonly property bool _uploading: control.camera ? control.camera.nucList.transferUpload : false

            //: A message
            text: _uploading ? qsTr("Failed to upload file.")
                             //: A message
                             : qsTr("Failed to download file.")
        }
    }
}
