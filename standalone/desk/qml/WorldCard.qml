import QtQuick
import zvt.controller.desk

// What surrounds the camera, and what a hand does to it.
Card {
    id: card

    required property WorldModel model

    name: "world"
    //: Title of the card with what surrounds the emulated camera
    title: qsTr("World")
    body: Column {
        Binding {
            target: card.model
            property: "active"
            value: card.isShown
        }

        Repeater {
            model: card.model
            delegate: SettingDelegate {
                settings: card.model
            }
        }
    }
}
