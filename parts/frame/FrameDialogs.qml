import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The configuration menu, and the dialogs that belong to no page. Each is created when it is first opened.
Item {
    id: dialogs

    required property ZvtCameraModel camera
    required property bool connected
    // Null when a host application shows the page.
    required property var standaloneModel
    // The button that opens the menu, which is shown below it.
    required property Item menuButton

    function openMenu() {
        menu.open()
    }

    function openFinder() {
        cameraFinder.open()
    }

    function _showStates(mode: string) {
        camera.cameraState.refresh()
        states.instance().mode = mode
        states.open()
    }

    Connections {
        target: dialogs.standaloneModel
        function onConnectingChanged() {
            if (dialogs.standaloneModel.connecting || dialogs.standaloneModel.connected)
                return
            //: A message; the reason may follow in a second line
            const text = qsTr("Failed to connect to the camera.")
            const reason = dialogs.standaloneModel.connectError ?? ""
            connectFailed.instance().text = reason === "" ? text : text + "\n" + reason
            connectFailed.open()
        }
    }

    LazyLoader {
        id: menu

        file: Qt.resolvedUrl("ConfigurationMenu.qml")
        initialProperties: ({
            parent: dialogs.menuButton,
            camera: Qt.binding(() => dialogs.camera),
            connected: Qt.binding(() => dialogs.connected),
            standaloneModel: dialogs.standaloneModel
        })
    }

    Connections {
        target: menu.item
        function onStatesRequested(mode: string) {
            dialogs._showStates(mode)
        }
        function onTimeRequested() {
            time.open()
        }
        function onFilterNamesRequested() {
            filterNames.open()
        }
        function onAboutRequested() {
            about.open()
        }
    }

    LazyLoader {
        id: states

        file: "qrc:/zvt/dialogs/CameraStateDialog.qml"
        initialProperties: ({ stateModel: Qt.binding(() => dialogs.camera ? dialogs.camera.cameraState : null) })
    }

    LazyLoader {
        id: time

        file: "qrc:/zvt/dialogs/AdjustTimeDialog.qml"
        initialProperties: ({ timeModel: Qt.binding(() => dialogs.camera ? dialogs.camera.adjustTime : null) })
    }

    LazyLoader {
        id: filterNames

        file: "qrc:/zvt/dialogs/EditFilterNamesDialog.qml"
        initialProperties: ({ camera: Qt.binding(() => dialogs.camera) })
    }

    LazyLoader {
        id: about

        file: "qrc:/zvt/dialogs/AboutDialog.qml"
        initialProperties: ({
            camera: Qt.binding(() => dialogs.camera),
            aboutModel: Qt.binding(() => dialogs.camera ? dialogs.camera.aboutModel : null)
        })
    }

    LazyLoader {
        id: cameraFinder

        file: Qt.resolvedUrl("CameraFinder.qml")
        initialProperties: ({ standaloneModel: dialogs.standaloneModel })
    }

    LazyLoader {
        id: connectFailed

        file: "qrc:/zvt/dialogs/GenericMessageDialog.qml"
        initialProperties: ({
            //: Title of a message
            title: qsTr("Error")
        })
    }
}
