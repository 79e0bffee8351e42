import QtQuick
import QtQuick.Controls

// The empty page, which shows the cost of every window.
Item {
    Button {
        anchors.centerIn: parent
        text: "Button"
    }
}
