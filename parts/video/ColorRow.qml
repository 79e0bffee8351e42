import QtQuick
import QtQuick.Layouts
import zvt.rows

// A row that makes the text of the overlay or its background transparent, or gives it a colour of the palette.
SettingRow {
    id: row

    required property bool hasColor
    required property int colorIndex
    required property color swatch

    // The operator has chosen whether there is a colour. Each call of the model's setter writes to the camera.
    signal chosen(hasColor: bool)
    // The operator wants to pick the colour.
    signal opened(button: ColorButton)
    // The operator has picked an entry of the palette.
    signal picked(index: int)

    Radio {
        Layout.rightMargin: 8
        Accessible.name: row.name + ": " + text
        checked: !row.hasColor
        //: A colour of the video overlay: none
        text: qsTr("Transparent")
        onToggled: row.chosen(false)
    }

    Radio {
        Layout.rightMargin: 8
        Accessible.name: row.name + ": " + text
        checked: row.hasColor
        //: A colour of the video overlay: one of the palette
        text: qsTr("Color")
        onToggled: row.chosen(true)
    }

    ColorButton {
        id: button

        enabled: row.hasColor
        subject: row.name
        colorIndex: row.colorIndex
        swatch: row.swatch
        onClicked: row.opened(button)
        onPicked: index => row.picked(index)
    }
}
