import QtQuick

// The number of a preset on the Correction tab: tells whether the preset is in use. A press does nothing.
SetupTabPresetNumberButton {
    id: label

    tellsOnly: true
    focusPolicy: Qt.NoFocus
    font.pixelSize: inUse ? root.textSize + 3 : root.textSize

    background: Rectangle {
        radius: 3
        color: root.fieldColor
        border.width: label.inUse ? 3 : 1
        border.color: label.inUse ? root.kestrinAccentBlue : root.fieldFrameColor
    }
}
