import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The list of states saved in the camera, the progress of a transfer, and a field for the name of the state to save or
// load.
ColumnLayout {
    id: chooser

    required property var stateModel
    // Whether the dialog saves a state, so that a new name can be typed.
    required property bool saves
    // Whether the field for the name is shown.
    required property bool showsName

    readonly property alias selected: table.selected
    readonly property alias name: nameBox.text
    readonly property Item firstField: saves ? nameBox : table.list

    // Enter was pressed or the button clicked.
    signal confirmed

    function select(state: string) {
        table.select(state)
    }

    function selectRow(row: int) {
        table.selectRow(row)
    }

    spacing: Look.rowSpacing

    StateTable {
        id: table

        Layout.fillWidth: true
        Layout.fillHeight: true
        stateModel: chooser.stateModel
        onChosen: nameBox.revert()
        onConfirmed: chooser.confirmed()
    }

    // Keeps its space while hidden, so that nothing moves under the pointer when a transfer starts or ends.
    Item {
        Layout.fillWidth: true
        implicitHeight: 8

        ProgressLine {
            objectName: "transferProgress"
            anchors.fill: parent
            visible: chooser.stateModel ? chooser.stateModel.transferring : false
            //: A progress bar
            Accessible.name: qsTr("Transfer")
            from: 0
            to: 100
            value: chooser.stateModel ? chooser.stateModel.progress : 0
        }
    }

    RowLayout {
        visible: chooser.showsName
        spacing: 8

        TextBox {
            id: nameBox

            Layout.fillWidth: true
            //: A text field
            name: qsTr("State Name")
            //: Placeholder in an empty text field
            placeholderText: chooser.saves ? qsTr("State Name") : ""
            readOnly: !chooser.saves
            maximumBytes: Fields.longestStateName
            modelText: table.selected
            onTextEdited: table.selected = ""
            onAccepted: chooser.confirmed()
        }

        DialogButton {
            enabled: nameBox.text !== ""
            primary: true
            //: Saves the camera's settings under a name
            text: chooser.saves ? qsTr("Save")
                                //: Loads settings that the camera has saved
                                : qsTr("Load")
            onClicked: chooser.confirmed()
        }
    }
}
