import QtQuick
import zvt
import zvt.look

// A button that turns the filter wheel, and the spinner that is shown in its place while the wheel turns. It keeps its
// place while the button is hidden.
Item {
    id: action

    property alias text: button.text
    // Whether the button is shown.
    property alias shows: button.visible
    // What the wheel turns to, for the accessible name.
    property string subject
    // Whether the wheel turns, so that the button cannot be used.
    property bool moving
    // Whether the spinner is shown.
    property bool busy

    signal clicked

    implicitHeight: Look.rowHeight
    activeFocusOnTab: activeFocus

    WrappingButton {
        id: button

        anchors.fill: parent
        enabled: !action.moving
        Accessible.name: text + " " + action.subject
        onClicked: {
            // The button disappears. From its place the Tab key goes on to the next one.
            if (visualFocus)
                action.forceActiveFocus(Qt.TabFocusReason)
            action.clicked()
        }
    }

    Loader {
        anchors.centerIn: parent
        active: action.busy
        sourceComponent: Spinner {
            objectName: "filterBusy"
        }
    }
}
