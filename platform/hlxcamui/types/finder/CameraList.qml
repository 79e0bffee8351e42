import QtQuick
import QtQuick.Templates as T

// The list of cameras.
ListView {
    id: list

    readonly property int _rowsOfAPage: Math.max(1, Math.floor(height / FinderLook.rowHeight) - 1)

    // The operator wants to connect the current camera.
    signal chosen()

    function _goTo(index) {
        if (count > 0)
            currentIndex = Math.max(0, Math.min(count - 1, index))
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: true
    activeFocusOnTab: true
    highlightMoveDuration: 0

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Cameras")

    Keys.onReturnPressed: chosen()
    Keys.onEnterPressed: chosen()
    Keys.onPressed: event => {
        const targets = new Map([[Qt.Key_Home, 0], [Qt.Key_End, count - 1],
                                 [Qt.Key_PageUp, currentIndex - _rowsOfAPage],
                                 [Qt.Key_PageDown, currentIndex + _rowsOfAPage]])
        event.accepted = targets.has(event.key)
        if (event.accepted)
            _goTo(targets.get(event.key))
    }
    // A camera that appears while no camera is selected becomes the current one.
    onCountChanged: if (currentIndex < 0) _goTo(0)

    T.ScrollBar.vertical: FinderScrollBar { }

    delegate: CameraRow { }

    // On a double click; its first click has already made the camera the current one.
    Connections {
        target: list.currentItem

        function onDoubleClicked() {
            list.chosen()
        }
    }
}
