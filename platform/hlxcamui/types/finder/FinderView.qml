import QtQuick

// The contents of the camera finder: the list of cameras, the folder of the selected camera, and the buttons.
Item {
    id: view

    required property var cameraFinder
    required property string configDir

    readonly property var _selected: list.currentIndex >= 0 && list.currentIndex < list.count
                                     ? cameraFinder.cameras.at(list.currentIndex) : null
    readonly property string _folder: _selected && _selected.folder ? _selected.folder : configDir

    signal chosen(var key)
    signal cancelled()

    function _choose() {
        if (_selected)
            chosen(_selected.key)
    }

    Accessible.role: Accessible.Dialog
    Accessible.name: title.text

    FittedText {
        id: title

        anchors { left: parent.left; right: parent.right; top: parent.top }
        text: qsTr("Connect to Camera")
        color: FinderLook.strongTextColor
        font.weight: Font.DemiBold
    }

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: title.bottom; topMargin: 12; bottom: folder.top; bottomMargin: 8 }
        radius: 3
        color: FinderLook.fieldColor
        border.color: FinderLook.frameColor

        CameraList {
            id: list

            anchors { fill: parent; margins: 1 }
            focus: true
            model: view.cameraFinder ? view.cameraFinder.cameras : null
            onChosen: view._choose()
        }

        Text {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTr("No cameras found")
            color: FinderLook.dimTextColor
            font.pixelSize: FinderLook.textSize
        }

        FocusRing {
            visible: list.activeFocus
        }
    }

    FittedText {
        id: folder

        anchors { left: parent.left; right: parent.right; bottom: buttons.top; bottomMargin: 16 }
        text: view._folder ? qsTr("Settings: %1").arg(view._folder) : ""
        color: FinderLook.dimTextColor
        font.pixelSize: FinderLook.hintSize
        elide: Text.ElideMiddle
    }

    Row {
        id: buttons

        anchors { right: parent.right; bottom: parent.bottom }
        spacing: 12

        FinderButton {
            text: qsTr("Connect")
            primary: true
            enabled: view._selected !== null
            onClicked: view._choose()
        }

        FinderButton {
            text: qsTr("Cancel")
            onClicked: view.cancelled()
        }
    }
}
