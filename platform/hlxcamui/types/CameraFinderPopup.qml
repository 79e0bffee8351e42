import QtQuick
import QtQuick.Templates as T
import "finder"

// The cameras that can be connected. Its contents are made when it opens, and are gone when it has closed.
T.Popup {
    id: popup

    // An object with `cameras`, an ObjectListModel of objects with `key`, `name` and `profile`; with `folder` too, if it
    // is known where the camera keeps its files.
    property var cameraFinder: null
    // The folder that is shown for a camera without one of its own.
    property string configDir

    // Comes after the popup has closed, so that nothing of the connection runs while it is open.
    signal connect(var camera)

    // The key of the camera that is to be connected.
    property var _chosen: null

    readonly property Loader _view: Loader {
        focus: true
    }
    readonly property Connections _answers: Connections {
        target: popup._view.item

        function onChosen(key) {
            popup._chosen = key
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

    // By its address, so that its types are not loaded together with the page.
    onAboutToShow: _view.setSource("finder/FinderView.qml", { cameraFinder: cameraFinder, configDir: configDir })
    onClosed: {
        _view.setSource("")
        const key = _chosen
        _chosen = null
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
