import QtQuick
import QtQuick.Controls

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
}
