import QtQuick
import QtQuick.Templates as T

// Shows a message. The button or a click outside closes it.
InformationDialog {
    //: Title of a message; the name of the program
    title: qsTr("KESTRIN Quarry Desk")
    //: Closes a message
    buttonText: qsTr("OK")
    primary: true
    fullWidth: 360
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 150
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            from: 1
            to: 0
            duration: 150
        }
    }
}
