import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import "../../hlxcamui/controls"
import zvt.dialogs
import zvt.look
import zvt.rows

// Shows what a correction says about itself, which the operator can save as a text file. `model` must be set before the
// dialog opens; the dialog drops it when it closes.
InformationDialog {
    id: dialog

    property NucInfoModel model

    readonly property bool _hasRows: model ? !model.refreshing && model.status : false

    //: Title of a dialog
    title: qsTr("NUC Information")
    width: parent ? Math.min(600, parent.width - 64) : 600
    height: parent ? Math.min(800, parent.height - 64) : 800
    initialFocus: doneButton
    onClosed: model = null

    contentItem: NucInfoTable {
        infoModel: dialog.model
    }
    buttons: [
        DialogButton {
            enabled: dialog._hasRows
            //: Saves the shown information as a file
            text: qsTr("Save")
            onClicked: fileDialog.open()
        },
        DialogButton {
            id: doneButton

            //: Closes a dialog after its work is done
            text: qsTr("Done")
            onClicked: dialog.accept()
        }
    ]

    LazyLoader {
        id: fileDialog

        WidgetFileDialog {
            //: Title of a file dialog
            title: qsTr("Select text File")
            selectExisting: false
            folder: shortcuts.documents
            //: File types
            nameFilters: [qsTr("Text files (*.txt)"),
                          //: File types; all files are meant
                          qsTr("Text files (*)")]
            onAccepted: {
                if (dialog.model)
                    dialog.model.save(String(fileUrl))
            }
        }
    }
}
