import QtQuick
import QtQuick.Layouts
import zvt
import zvt.dialogs
import zvt.rows

// Shows the camera's clock and sets it to a typed time or to the computer's time. "Set" sends the typed time unchecked;
// the camera accepts or refuses it. Enter does nothing while the typed time is invalid.
InformationDialog {
    id: dialog

    required property var timeModel

    function _set() {
        timeModel.cameraTime = parts.time()
    }

    //: Title of a dialog
    title: qsTr("Adjust Time")
    initialFocus: closeButton
    onVisibleChanged: {
        if (visible) {
            parts.show(timeModel.cameraTime)
            timeModel.refresh()
        }
    }

    contentItem: ColumnLayout {
        spacing: 16

        TimeParts {
            id: parts

            Layout.fillWidth: true
            onConfirmed: {
                if (!isNaN(time().getTime()))
                    dialog._set()
            }
        }

        WrappingButton {
            //: Sets the camera's clock to the computer's time
            text: qsTr("Sync camera time to PC time")
            onClicked: dialog.timeModel.syncCameraTimeToPC()
        }
    }
    buttons: [
        DialogButton {
            //: Shows the time of the camera's clock
            text: qsTr("Get")
            onClicked: dialog.timeModel.getCameraTime()
        },
        DialogButton {
            primary: true
            //: Sets the camera's clock
            text: qsTr("Set")
            onClicked: dialog._set()
        },
        DialogButton {
            id: closeButton

            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    ]

    Connections {
        target: dialog.timeModel
        // After "Get" the camera's time replaces the typed one, even if the property keeps its value. An invalid time
        // does not replace the typed one, so that the operator can correct it.
        function onCameraTimeChanged() {
            const time = dialog.timeModel.cameraTime
            if (!isNaN(time.getTime()))
                parts.show(time)
        }
    }
}
