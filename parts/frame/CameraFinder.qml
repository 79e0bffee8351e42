import QtQuick
import com.kestrin.hlxcamui 1.0
import zvt.look

// The host's popup for choosing a camera to connect to.
CameraFinderPopup {
    id: finder

    required property var standaloneModel

    font.pixelSize: Look.textSize
    cameraFinder: standaloneModel.cameraFinder
    configDir: standaloneModel.configDir
    onConnect: camera => finder.standaloneModel.connect(camera)
}
