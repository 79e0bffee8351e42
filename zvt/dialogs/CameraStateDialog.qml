import QtQuick
import "../../hlxcamui/controls"
import zvt.dialogs
import zvt.look
import zvt.rows

// The states that are saved in the camera. `mode` must be set before the dialog opens. The mode "save" saves the
// settings as a state, the mode "load" loads one; every mode can rename, delete, upload and download states.
InformationDialog {
    id: dialog

    required property var stateModel
    // "save", "load" or "manage".
    property string mode: "manage"

    readonly property bool _saves: mode === "save"
    readonly property bool _manages: mode === "manage"
    readonly property bool _hasSelection: chooser.selected !== ""

    function _saveOrLoad() {
        const name = chooser.name
        if (_manages || name === "")
            return
        if (!_saves) {
            stateModel.loadState(name)
            accept()
        } else if (!stateModel.stateNameValid(name)) {
            invalidNameDialog.open()
        } else if (stateModel.stateExists(name)) {
            _askToOverwrite("save")
        } else {
            _save()
        }
    }

    function _save() {
        stateModel.saveStateAs(chooser.name)
        accept()
    }

    function _upload() {
        stateModel.uploadState(String(uploadFileDialog.instance().fileUrl))
    }

    function _askToOverwrite(what: string) {
        overwriteDialog.instance().mode = what
        overwriteDialog.open()
    }

    function _renameOrDelete(question: LazyLoader) {
        question.instance().stateName = chooser.selected
        question.open()
    }

    // The name of a state after its upload from `file`: the file name without its extension.
    function _stateNameOf(file: url): string {
        const encoded = String(file)
        return decodeURIComponent(encoded.slice(encoded.lastIndexOf("/") + 1)).replace(/\.[^.]*$/, "")
    }

    function _title(): string {
        if (_manages)
            //: Title of a dialog
            return qsTr("Manage States")
        //: Title of a dialog
        return _saves ? qsTr("Save State")
                      //: Title of a dialog
                      : qsTr("Load State")
    }

    title: _title()
    fullWidth: 500
    initialFocus: chooser.firstField
    onAboutToShow: chooser.select("")

    // Narrower than other dialog buttons, since the dialog has five of them.
    component ActionButton: DialogButton {
        width: implicitWidth
    }

    component StateFileDialog: WidgetFileDialog {
        //: Title of a file dialog
        title: qsTr("Select State File")
        //: File types
        nameFilters: [qsTr("State files (*.qsf)"),
                      //: File types
                      qsTr("All files (*)")]
        folder: shortcuts.documents
    }

    contentItem: StateChooser {
        id: chooser

        stateModel: dialog.stateModel
        saves: dialog._saves
        showsName: !dialog._manages
        onConfirmed: dialog._saveOrLoad()
    }
    buttons: [
        ActionButton {
            enabled: dialog._hasSelection
            //: Changes the name of a state
            text: qsTr("Rename")
            onClicked: dialog._renameOrDelete(renameDialog)
        },
        ActionButton {
            enabled: dialog._hasSelection
            destructive: true
            //: Deletes a state
            text: qsTr("Delete")
            onClicked: dialog._renameOrDelete(deleteDialog)
        },
        ActionButton {
            //: Copies a state to the camera
            text: qsTr("Upload")
            onClicked: uploadFileDialog.open()
        },
        ActionButton {
            enabled: dialog._hasSelection
            //: Copies a state from the camera
            text: qsTr("Download")
            onClicked: {
                downloadFileDialog.instance().stateName = chooser.selected
                downloadFileDialog.open()
            }
        },
        ActionButton {
            //: Closes a dialog after its work is done
            text: dialog._manages ? qsTr("Done")
                                  //: Closes a dialog and changes nothing
                                  : qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]

    // A transfer may end after the dialog was closed; its failure is reported then too.
    Connections {
        target: dialog.stateModel
        function onTransferringChanged() {
            if (!dialog.stateModel.transferring && !dialog.stateModel.transferOk)
                transferFailedDialog.open()
        }
    }

    LazyLoader {
        id: uploadFileDialog

        StateFileDialog {
            onAccepted: {
                if (dialog.stateModel.stateExists(dialog._stateNameOf(fileUrl)))
                    dialog._askToOverwrite("upload")
                else
                    dialog._upload()
            }
        }
    }

    LazyLoader {
        id: downloadFileDialog

        StateFileDialog {
            property string stateName

            selectExisting: false
            defaultName: stateName + ".qsf"
            onAccepted: dialog.stateModel.downloadState(stateName, String(fileUrl))
        }
    }

    LazyLoader {
        id: renameDialog

        InformationDialog {
            id: question

            property string stateName

            function _rename() {
                if (!dialog.stateModel.stateNameValid(names.newName)) {
                    invalidNameDialog.open()
                    return
                }
                dialog.stateModel.renameState(stateName, names.newName)
                accept()
                // The renamed state is at another row now, so the first one is selected.
                chooser.selectRow(0)
            }

            //: Title of a dialog
            title: qsTr("Rename State")
            fullWidth: 400
            initialFocus: names.firstField
            onAboutToShow: names.firstField.revert()

            contentItem: RenameFields {
                id: names

                oldName: question.stateName
                maximumBytes: Fields.longestStateName
                onConfirmed: question._rename()
            }
            buttons: [
                DialogButton {
                    //: Changes the name of a state
                    text: qsTr("Rename")
                    onClicked: question._rename()
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
            property string stateName

            //: Title of a question
            title: qsTr("Delete State")
            //: %1 is the name of a state
            text: qsTr("Are you sure you want to delete %1?").arg(stateName)
            //: Deletes a state
            confirmButtonText: qsTr("Delete")
            //: Closes a dialog and changes nothing
            denyButtonText: qsTr("Cancel")
            destructive: true
            onAccepted: {
                dialog.stateModel.deleteState(stateName)
                chooser.select("")
            }
        }
    }

    LazyLoader {
        id: overwriteDialog

        ConfirmationDialog {
            // "save" or "upload".
            property string mode

            //: Title of a question
            title: qsTr("Warning")
            //: A question
            text: qsTr("That state already exists.\n\nDo you want to overwrite it?")
            destructive: true
            onAccepted: {
                if (mode === "save")
                    dialog._save()
                else
                    dialog._upload()
            }
        }
    }

    LazyLoader {
        id: invalidNameDialog

        GenericMessageDialog {
            //: Title of a message
            title: qsTr("Error")
            //: A message
            text: qsTr("State name is not valid. They cannot contain these characters:\n\n / \\ : \" * ? < > | \n\n"
                       + "They must have at least one nonspace character and cannot start with a space character.")
        }
    }

    LazyLoader {
        id: transferFailedDialog

        GenericMessageDialog {
            readonly property bool _uploading: dialog.stateModel ? dialog.stateModel.transferUpload : false

            // The content of a closed dialog is in no window.
            parent: dialog.parent
            //: Title of a message
            title: qsTr("Error")
            //: A message
            text: _uploading ? qsTr("Failed to upload file.")
                             //: A message
                             : qsTr("Failed to download file.")
        }
    }
}
