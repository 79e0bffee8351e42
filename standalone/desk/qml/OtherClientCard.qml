import QtQuick
import QtQuick.Controls
import zvt.controller.desk

// All settings and capabilities of the camera, to be changed as by another client.
Card {
    id: card

    required property SettingListModel model

    name: "otherClient"
    //: Title of the card that changes settings as another program does
    title: qsTr("Other client")
    body: Column {
        spacing: DeskLook.spacing

        Binding {
            target: card.model
            property: "active"
            value: card.isShown
        }

        TextField {
            width: parent.width
            height: DeskLook.rowHeight
            text: card.model.filter
            //: Shown in the empty field
            placeholderText: qsTr("Filter, such as focus or capabilities")
            placeholderTextColor: DeskLook.dimTextColor
            selectByMouse: true
            font.pixelSize: DeskLook.textSize
            onTextEdited: card.model.filter = text

            //: Accessible name of the field
            Accessible.name: qsTr("Filter of the settings")
        }

        CardNote {
            //: Shown in place of the list
            readonly property string _waits: qsTr("The settings are being read.")

            visible: card.model.count === 0
            //: Shown in place of the list
            text: card.model.filter ? qsTr("No setting has this text in its name.") : _waits
        }

        ListView {
            id: list

            width: parent.width
            height: Math.min(contentHeight, 420)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: card.model
            delegate: SettingDelegate {
                width: list.width - 12
                labelWidth: 170
                settings: card.model
                onIsUsedByKeyboardChanged: {
                    if (isUsedByKeyboard)
                        list.positionViewAtIndex(index, ListView.Contain)
                }
            }

            ScrollBar.vertical: ScrollBar { }
        }
    }
}
