import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// Asks for a name and saves the current lens settings as a lens state of this name.
InformationDialog {
    id: dialog

    required property var tabModel
    // The text of the field when the dialog opens.
    property string presetName

    function save(name: string) {
        tabModel.addLensState(name)
    }

    //: Title of a dialog
    title: qsTr("Add Lens State")
    fullWidth: 300
    initialFocus: nameBox
    onAboutToShow: {
        nameBox.revert()
        nameBox.selectAll()
    }
    onAccepted: save(nameBox.text)

    contentItem: RowLayout {
        spacing: 12

        PlainLabel {
            id: nameLabel

            Accessible.ignored: true
            //: The name of a lens state
            text: qsTr("Name:")
        }

        TextBox {
            id: nameBox

            readonly property bool acceptable: /^\S[\S ]{0,30}$/.test(text)

            Layout.fillWidth: true
            name: nameLabel.text.replace(":", "")
            modelText: dialog.presetName
            fault: acceptable || text === ""
                   ? ""
                   //: Tool tip of a field: which names are allowed
                   : qsTr("At most 31 characters, the first one no blank")
            // Not onEditingFinished: a press on "Cancel" also causes that.
            onAccepted: {
                if (acceptable)
                    dialog.accept()
            }
        }
    }
    buttons: [
        DialogButton {
            enabled: nameBox.acceptable
            primary: true
            //: Saves the lens state under the entered name
            text: qsTr("Save")
            onClicked: dialog.accept()
        },
        DialogButton {
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
