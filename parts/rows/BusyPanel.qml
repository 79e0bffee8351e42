import QtQuick
import zvt.look

// A panel with a spinner and a text, shown in place of rows while these are read.
Rectangle {
    id: panel

    required property string text
    // The object name of the spinner.
    property string spinnerName

    implicitHeight: 2 * Look.rowHeight
    radius: 4
    color: Look.cardColor
    border.color: Look.rectangleOutlineColor

    Row {
        anchors.centerIn: parent
        spacing: 12

        Loader {
            active: panel.visible
            sourceComponent: Spinner {
                objectName: panel.spinnerName
            }
        }

        PlainLabel {
            text: panel.text
        }
    }
}
