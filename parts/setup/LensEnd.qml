import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look

// One end of a lens range: a button that moves the lens there, or only the name of the end.
Loader {
    id: end

    required property bool unlocked
    required property string name
    property bool nameOnly

    signal chosen

    sourceComponent: nameOnly ? label : button
    Layout.fillWidth: !nameOnly
    Layout.preferredWidth: nameOnly ? -1 : 66
    Layout.maximumWidth: 120

    Component {
        id: button

        WrappingButton {
            enabled: end.unlocked
            leftPadding: 4
            rightPadding: 4
            text: end.name
            onClicked: end.chosen()
        }
    }

    Component {
        id: label

        PlainLabel {
            opacity: end.unlocked ? 1 : Look.disabledOpacity
            text: end.name
        }
    }
}
