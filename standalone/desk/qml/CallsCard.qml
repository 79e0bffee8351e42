import QtQuick
import QtQuick.Controls
import zvt.controller.desk

// The last calls to the camera.
Card {
    id: card

    required property CallListModel model

    name: "calls"
    title: qsTr("Calls")
    body: Column {
        spacing: DeskLook.spacing / 2

        Binding {
            target: card.model
            property: "active"
            value: card.isShown
        }
        Binding {
            target: card.model
            property: "paused"
            value: pause.checked || list.isRead
        }

        TextField {
            width: parent.width
            height: DeskLook.rowHeight
            selectByMouse: true
            font.pixelSize: DeskLook.textSize
            placeholderText: qsTr("Filter by name or arguments")
            placeholderTextColor: DeskLook.dimTextColor
            onTextEdited: card.model.filter = text

            Accessible.name: placeholderText
        }
        CardSwitch {
            label: qsTr("Only failed calls")
            value: card.model.onlyFailed
            onToggled: value => card.model.onlyFailed = value
        }
        Row {
            id: buttons

            readonly property real buttonWidth: (width - 2 * spacing) / 3

            width: parent.width
            spacing: DeskLook.spacing

            CardButton {
                id: pause

                width: buttons.buttonWidth
                checkable: true
                text: qsTr("Pause")
            }
            CardButton {
                width: buttons.buttonWidth
                text: qsTr("Clear")
                onClicked: card.model.clear()
            }
            CardButton {
                width: buttons.buttonWidth
                enabled: card.model.count > 0 && !card.model.saver.saving
                text: qsTr("Export...")
                onClicked: card.model.exportCalls()
            }
        }
        CardNote {
            visible: text !== ""
            text: card.model.saver.result
            isError: card.model.saver.failed
        }
        CallRow {
            width: parent.width
            time: qsTr("Time")
            thread: qsTr("Thread")
            name: qsTr("Name")
            inputs: qsTr("Arguments")
            status: qsTr("Status")
            duration: qsTr("Duration")
        }
        CallList {
            id: list

            width: parent.width
            calls: card.model
        }
        CardNote {
            text: card.model.paused ? qsTr("Paused: %n new call(s)", "", card.model.waiting)
                                    : qsTr("%n call(s), the newest first", "", card.model.count)
        }
    }
}
