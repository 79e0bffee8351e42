import QtQuick
import QtQuick.Controls

// What every window costs.
Item {
    Button {
        anchors.centerIn: parent
        text: "Button"
    }
}
