import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// Asks for the name of a lens state, and saves the present lens settings under it.
InformationDialog {
    id: dialog

    required property var tabModel
    // What the field starts with.
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
            shown: dialog.presetName
            fault: acceptable || text === ""
                   ? ""
                   //: Tool tip of a field: which names can be taken
                   : qsTr("At most 31 characters, the first one no blank")
            // Not onEditingFinished: a press on the cancelling button causes that too.
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
            //: Keeps what was entered
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
