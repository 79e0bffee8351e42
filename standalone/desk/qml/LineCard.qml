import QtQuick
import zvt.controller.desk

// The faults of the line between the controller and the camera.
Card {
    id: card

    required property LineModel model

    name: "line"
    title: qsTr("Line")
    body: Column {
        spacing: DeskLook.spacing / 2

        Binding {
            target: card.model
            property: "active"
            value: card.isShown
        }

        CardField {
            id: latency

            label: qsTr("Latency")
            unit: qsTr("ms")
            hint: qsTr("0 to 2000")
            value: card.model.latency
            onEdited: text => latency.error = card.model.enterLatency(text)
            onDropped: latency.error = ""
        }
        CardField {
            id: jitter

            label: qsTr("Jitter")
            unit: qsTr("ms")
            hint: qsTr("0 to 2000")
            value: card.model.jitter
            onEdited: text => jitter.error = card.model.enterJitter(text)
            onDropped: jitter.error = ""
        }
        CardField {
            id: failures

            label: qsTr("Failing calls")
            unit: qsTr("%")
            hint: qsTr("0 to 100")
            value: card.model.failPercent
            onEdited: text => failures.error = card.model.enterFailPercent(text)
            onDropped: failures.error = ""
        }
        CardField {
            id: seed

            label: qsTr("Seed of failures")
            value: card.model.seed
            onEdited: text => seed.error = card.model.enterSeed(text)
            onDropped: seed.error = ""
        }
        CardSwitch {
            label: qsTr("Refuse all changes")
            value: card.model.refusesChanges
            onToggled: value => card.model.refusesChanges = value
        }
        LineNames {
            model: card.model
        }
        CardRow {
            label: qsTr("Cable")

            CardButton {
                width: parent.width
                enabled: card.model.canMoveCable
                text: card.model.pulled ? qsTr("Plug in the cable") : qsTr("Pull the cable")
                onClicked: {
                    if (card.model.pulled)
                        card.model.plug()
                    else
                        card.model.pull()
                }
            }
        }
    }
}
