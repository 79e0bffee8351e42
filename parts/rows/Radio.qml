import QtQuick
import QtQuick.Templates as T
import zvt.look

// A radio button. The radio buttons of one parent exclude each other. Enter checks it, like the space bar.
T.RadioButton {
    id: radio

    function _check() {
        if (checked)
            return
        toggle()
        toggled()
    }

    implicitWidth: implicitContentWidth
    implicitHeight: Math.max(Look.rowHeight, implicitContentHeight + topPadding + bottomPadding)
    spacing: 8
    topPadding: 4
    bottomPadding: 4
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: text

    Keys.onReturnPressed: _check()
    Keys.onEnterPressed: _check()

    indicator: Rectangle {
        y: (radio.height - height) / 2
        width: 16
        height: 16
        radius: 8
        color: radio.checked ? Look.onColor : Look.fieldColor
        border.color: radio.checked ? Look.kestrinAccentBlue : Look.fieldFrameColor

        Rectangle {
            x: 4
            y: 4
            visible: radio.checked
            width: 8
            height: 8
            radius: 4
            color: Look.kestrinAccentBlue
        }
    }
    contentItem: PlainLabel {
        leftPadding: 16 + radio.spacing
        text: radio.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
    }
}
