import QtQuick
import QtQuick.Layouts
import zvt.rows

// The switch of a frame of the overlay, and its colour.
RowLayout {
    id: frame

    required property string name
    required property bool shown
    required property int colorIndex
    required property color swatch

    // The operator has switched the frame on or off.
    signal chosen(shown: bool)
    // The operator wants to pick the colour.
    signal opened(button: ColorButton)
    // The operator has picked an entry of the palette.
    signal picked(index: int)

    spacing: 8

    Toggle {
        Layout.preferredWidth: 112
        text: frame.name
        checked: frame.shown
        onToggled: frame.chosen(checked)
    }

    ColorButton {
        id: button

        enabled: frame.shown
        subject: frame.name
        colorIndex: frame.colorIndex
        swatch: frame.swatch
        onClicked: frame.opened(button)
        onPicked: index => frame.picked(index)
    }
}
