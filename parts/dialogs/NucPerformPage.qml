import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The page of the correction wizard while the camera makes the correction: the camera's own words.
ColumnLayout {
    id: page

    required property ZvtCameraModel camera
    required property bool connected

    readonly property bool _working: camera ? connected && camera.nucProcess.inProgress && !camera.nucProcess.canNext : false

    spacing: 16

    Item {
        Layout.fillHeight: true
    }

    // Keeps its space while hidden, so that the text does not move.
    Item {
        Layout.alignment: Qt.AlignHCenter
        implicitWidth: 32
        implicitHeight: 32

        Loader {
            active: page._working && page.visible
            sourceComponent: Spinner {
                objectName: "nucBusy"
                size: 32
            }
        }
    }

    PlainLabel {
        Layout.fillWidth: true
        //: What the camera does while it makes a correction
        Accessible.name: qsTr("Status")
        Accessible.description: text
        text: page.camera ? page.camera.nucProcess.statusText : ""
        color: Look.strongTextColor
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    Item {
        Layout.fillHeight: true
        Layout.preferredHeight: 1
    }
}
