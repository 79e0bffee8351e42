import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "../controls"

// Asks for the name of a lens state, and saves the present lens settings under it.
InformationDialog {
    id: dialog

    required property var tabModel
    // What the field starts with.
    property string presetName

    readonly property NameRow _row: NameRow {}

    function save(name: string) {
        tabModel.addLensState(name)
    }

    //: Title of a dialog
    title: qsTr("Add Lens State")
    fullWidth: 300
    initialFocus: _row.field
    onAboutToShow: {
        _row.field.text = presetName
        _row.field.selectAll()
    }
    onAccepted: save(_row.field.text)

    component NameRow: RowLayout {
        readonly property alias field: nameField

        spacing: 12

        Label {
            id: nameLabel

            Accessible.ignored: true
            //: The name of a lens state
            text: qsTr("Name:")
            color: root.textColor
        }

        TextField {
            id: nameField

            Layout.fillWidth: true
            implicitHeight: root.rowHeight
            Accessible.name: nameLabel.text.replace(":", "")
            selectByMouse: true
            // Not onEditingFinished: that comes of a press on the cancelling button too.
            onAccepted: dialog.accept()

            validator: RegularExpressionValidator {
                regularExpression: /^\S[\S ]{0,30}$/
            }
            background: Rectangle {
                radius: 2
                color: root.fieldColor
                border.color: nameField.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor
            }
        }
    }
    contentItem: _row
    buttons: [
        WrappingButton {
            width: Math.max(88, implicitWidth)
            enabled: dialog._row.field.acceptableInput
            //: Keeps what was entered
            text: qsTr("Save")
            onClicked: dialog.accept()
        },
        WrappingButton {
            width: Math.max(88, implicitWidth)
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
