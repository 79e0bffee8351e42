import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The configuration menu, and the dialogs that belong to no page. Each is made when it is first opened.
Item {
    id: dialogs

    required property ZvtCameraModel camera
    required property bool connected
    // Null when a host application holds the page.
    required property var standaloneModel
    // Opens the menu.
    required property Item menuButton

    function openMenu() {
        menu.open()
    }

    function openFinder() {
        cameraFinder.open()
    }

    function _showStates(mode: string) {
        camera.cameraState.refresh()
        states.made().mode = mode
        states.open()
    }

    Connections {
        target: dialogs.standaloneModel
        function onConnectingChanged() {
            if (dialogs.standaloneModel.connecting || dialogs.standaloneModel.connected)
                return
            //: A message; what went wrong follows in a line of its own
            const text = qsTr("Failed to connect to the camera.")
            const reason = dialogs.standaloneModel.connectError ?? ""
            connectFailed.made().text = reason === "" ? text : text + "\n" + reason
            connectFailed.open()
        }
    }

    Later {
        id: menu

        file: Qt.resolvedUrl("ConfigurationMenu.qml")
        given: ({
            parent: dialogs.menuButton,
            camera: Qt.binding(() => dialogs.camera),
            connected: Qt.binding(() => dialogs.connected),
            standaloneModel: dialogs.standaloneModel
        })
    }

    Connections {
        target: menu.item
        function onStatesWanted(mode: string) {
            dialogs._showStates(mode)
        }
        function onTimeWanted() {
            time.open()
        }
        function onAboutWanted() {
            about.open()
        }
    }

    Later {
        id: states

        file: "qrc:/zvt/dialogs/CameraStateDialog.qml"
        given: ({ stateModel: Qt.binding(() => dialogs.camera ? dialogs.camera.cameraState : null) })
    }

    Later {
        id: time

        file: "qrc:/zvt/dialogs/AdjustTimeDialog.qml"
        given: ({ timeModel: Qt.binding(() => dialogs.camera ? dialogs.camera.adjustTime : null) })
    }

    Later {
        id: about

        file: "qrc:/zvt/dialogs/AboutDialog.qml"
        given: ({
            camera: Qt.binding(() => dialogs.camera),
            aboutModel: Qt.binding(() => dialogs.camera ? dialogs.camera.aboutModel : null)
        })
    }

    Later {
        id: cameraFinder

        file: Qt.resolvedUrl("CameraFinder.qml")
        given: ({ standaloneModel: dialogs.standaloneModel })
    }

    Later {
        id: connectFailed

        file: "qrc:/zvt/dialogs/GenericMessageDialog.qml"
        given: ({
            //: Title of a message
            title: qsTr("Error")
        })
    }
}
