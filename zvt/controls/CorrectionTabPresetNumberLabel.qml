import QtQuick
import zvt.look

// The number of a preset on the Correction tab: shows whether the preset is in use. A press does nothing.
SetupTabPresetNumberButton {
    id: label

    tellsOnly: true
    focusPolicy: Qt.NoFocus
    font.pixelSize: inUse ? Look.textSize + 3 : Look.textSize

    background: Rectangle {
        radius: Look.controlRadius
        color: Look.fieldColor
        border.width: label.inUse ? 3 : 1
        border.color: label.inUse ? Look.kestrinAccentBlue : Look.fieldFrameColor
    }
}
