import QtQuick
import zvt.look

// The number of a preset on the Correction tab. Shows whether the preset is in use; a click does nothing.
SetupTabPresetNumberButton {
    id: label

    readOnly: true
    focusPolicy: Qt.NoFocus
    font.pixelSize: inUse ? Look.textSize + 3 : Look.textSize

    background: Rectangle {
        radius: Look.controlRadius
        color: Look.fieldColor
        border.width: label.inUse ? 3 : 1
        border.color: label.inUse ? Look.kestrinAccentBlue : Look.fieldFrameColor
    }
}
