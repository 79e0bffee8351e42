import QtQuick
import QtQuick.Templates as T

// A message to be read and dismissed, by a click beside it too.
InformationDialog {
    //: Title of a message; the name of the program
    title: qsTr("KESTRIN Quarry Desk")
    //: Dismisses a message
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
