import QtQuick
import QtQuick.Controls
import com.kestrin.hlxcamui 1.0

Item {
    implicitWidth: 640
    implicitHeight: 480

    TabBar {
        width: parent.width

        TabButton {
            text: "Sound"
        }
        TabButton {
            text: "Faulty"
            onClicked: console.warn("a fault in the page")
        }
    }

    Button {
        y: 100
        text: "Connect"
        Accessible.name: text
        onClicked: finder.open()
    }

    CameraFinderPopup {
        id: finder

        cameraFinder: standaloneModel.cameraFinder
        onConnect: camera => standaloneModel.connect(camera)
    }
}
