import QtQuick
import QtQuick.Layouts
import zvt
import zvt.dialogs
import zvt.rows

// Shows the camera's clock and sets it, by hand or from the computer's clock. "Set" takes what was typed as it is: the
// camera judges. Enter ignores an invalid time.
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
            //: Sets the camera's clock by the computer's
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
        // "Get" shows the camera's time over what was typed even if it is the same time. An invalid
        // time that was typed stays, to be corrected.
        function onCameraTimeChanged() {
            const time = dialog.timeModel.cameraTime
            if (!isNaN(time.getTime()))
                parts.show(time)
        }
    }
}
