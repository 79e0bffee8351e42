import QtQuick
import QtQuick.Templates as T
import "finder"

// Lists the cameras that can be connected. Its contents are created when it opens and destroyed when it has closed.
T.Popup {
    id: popup

    // An object with the property `cameras`, an ObjectListModel of objects with `key`, `name` and `profile`, and
    // optionally `folder`, the folder of the camera's files.
    property var cameraFinder: null
    // The folder that is shown for a camera without `folder`.
    property string configDir

    // Emitted after the popup has closed, so that the connection starts only then.
    signal connect(var camera)

    // The key of the camera to connect.
    property var _keyToConnect: null

    readonly property Loader _view: Loader {
        focus: true
    }
    readonly property Connections _answers: Connections {
        target: popup._view.item

        function onChosen(key) {
            popup._keyToConnect = key
            popup.close()
        }

        function onCancelled() {
            popup.close()
        }
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(440, parent.width - 32) : 440
    height: parent ? Math.min(360, parent.height - 32) : 360
    padding: 16
    modal: true
    focus: true

    // By URL, so that its types are not loaded together with the page.
    onAboutToShow: _view.setSource("finder/FinderView.qml", { cameraFinder: cameraFinder, configDir: configDir })
    onClosed: {
        _view.setSource("")
        const key = _keyToConnect
        _keyToConnect = null
        if (key !== null)
            connect(key)
    }

    T.Overlay.modal: Rectangle {
        color: FinderLook.shadeColor
    }
    background: Rectangle {
        radius: 4
        color: FinderLook.panelColor
        border.color: FinderLook.frameColor
    }
    contentItem: _view
}
