import QtQuick
import QtQuick.Controls
import zvt.controller.desk

// The name of calls, and what happens to the calls of this name.
Column {
    id: names

    required property LineModel model

    property string _error: ""

    function _refresh() {
        // A change of the list replaces the text.
        const text = box.editText
        model.refreshNames()
        box.currentIndex = box.find(text)
        box.editText = text
    }

    width: parent ? parent.width : 0
    spacing: DeskLook.spacing / 2

    CardRow {
        label: qsTr("Calls named")

        ComboBox {
            id: box

            width: parent.width
            height: DeskLook.rowHeight
            editable: true
            selectTextByMouse: true
            font.pixelSize: DeskLook.textSize
            model: names.model.names
            onEditTextChanged: names._error = ""
            onActiveFocusChanged: if (activeFocus) names._refresh()

            Accessible.name: qsTr("Calls named")

            Connections {
                target: box.popup
                function onAboutToShow() {
                    names._refresh()
                }
            }
        }
    }
    CardNote {
        x: DeskLook.labelWidth
        width: parent.width - x
        visible: text !== ""
        isError: true
        text: names._error
    }
    CardRow {
        labelWidth: 0

        Row {
            id: buttons

            readonly property real buttonWidth: (parent.width - 2 * spacing) / 3

            spacing: DeskLook.spacing

            CardButton {
                width: buttons.buttonWidth
                text: qsTr("Fail next")
                onClicked: names._error = names.model.enterFailNext(box.editText)
            }
            CardButton {
                width: buttons.buttonWidth
                text: qsTr("Hold")
                onClicked: names._error = names.model.enterHold(box.editText)
            }
            CardButton {
                width: buttons.buttonWidth
                enabled: names.model.held !== ""
                text: qsTr("Release")
                onClicked: names.model.release()
            }
        }
    }
    CardNote {
        x: DeskLook.labelWidth
        width: parent.width - x
        visible: names.model.held !== ""
        text: qsTr("Holds %1: %n call(s) wait", "", names.model.heldCalls).arg(names.model.held)
    }
}
