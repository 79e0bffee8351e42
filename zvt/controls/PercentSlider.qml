import QtQuick
import QtQuick.Controls

// Moves something at a speed for as long as it is held: the further from the centre, the faster, and fine near the
// centre. A held arrow key moves too: slowly, faster with Shift, at full speed with Ctrl. It springs back when let go, and
// also when the press or the focus is taken away from it, so that a move never goes on by itself.
Item {
    id: slider

    // The speed, from -1 to 1: 0 at rest, otherwise at least 0.01 either way.
    readonly property real value: magnitude(Math.abs(position)) * Math.sign(position)
    readonly property alias pressed: mouse.pressed
    property string toolTip

    // Where the thumb stands, from -1 to 1.
    readonly property alias position: mouse.place

    readonly property bool _seen: visible && (Window.window?.visible ?? false)

    function magnitude(distance: real): real {
        const least = Math.pow(10, 0.01)
        const power = Math.pow(10, distance)
        return power < least ? 0 : (power - least) / (10 - least) * 0.99 + 0.01
    }

    function _isArrow(key: int): bool {
        return key === Qt.Key_Left || key === Qt.Key_Right
    }

    function _keyDistance(modifiers: int): real {
        return modifiers & Qt.ControlModifier ? 1 : modifiers & Qt.ShiftModifier ? 0.6 : 0.3
    }

    implicitWidth: 200
    implicitHeight: root.rowHeight
    opacity: enabled ? 1 : 0.5
    activeFocusOnTab: true

    Accessible.role: Accessible.Slider
    Accessible.name: toolTip
    Accessible.focusable: true

    onActiveFocusChanged: mouse.place = 0
    on_SeenChanged: mouse.place = 0
    Component.onDestruction: mouse.place = 0
    Keys.onPressed: event => {
        event.accepted = _isArrow(event.key)
        if (event.accepted && !event.isAutoRepeat && !pressed)
            mouse.place = (event.key === Qt.Key_Left ? -1 : 1) * _keyDistance(event.modifiers)
    }
    Keys.onReleased: event => {
        event.accepted = _isArrow(event.key)
        if (event.accepted && !event.isAutoRepeat && !pressed)
            mouse.place = 0
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        x: 12
        width: parent.width - 24
        height: 4
        radius: 2
        color: root.fieldColor
        border.color: root.fieldFrameColor
    }

    Rectangle {
        readonly property real middle: parent.width / 2
        readonly property real thumbMiddle: thumb.x + thumb.width / 2

        anchors.verticalCenter: parent.verticalCenter
        x: Math.min(middle, thumbMiddle)
        width: Math.abs(thumbMiddle - middle)
        height: 4
        color: root.kestrinAccentBlue
    }

    Rectangle {
        anchors.centerIn: parent
        width: 2
        height: 12
        color: root.fieldFrameColor
    }

    Rectangle {
        id: thumb

        readonly property real speed: Math.abs(slider.value)
        readonly property string imageName: speed === 0 ? "stop"
                                                        : speed < 0.25 ? "play1" : speed < 0.75 ? "play2" : "play3"

        anchors.verticalCenter: parent.verticalCenter
        x: (slider.position + 1) / 2 * (parent.width - width)
        width: 24
        height: 24
        radius: 4
        color: root.buttonColor
        border.width: slider.activeFocus ? 2 : 1
        border.color: slider.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor

        Image {
            objectName: "thumbImage"
            anchors.fill: parent
            source: "../images/" + thumb.imageName + ".png"
            mirror: slider.value < 0
        }
    }

    MouseArea {
        id: mouse

        property real place: 0

        function follow(mouseX: real) {
            place = Math.max(-1, Math.min(1, (mouseX - 12) / Math.max(1, width - 24) * 2 - 1))
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: event => {
            slider.forceActiveFocus(Qt.MouseFocusReason)
            follow(event.x)
        }
        onPositionChanged: event => {
            if (pressed)
                follow(event.x)
        }
        onReleased: place = 0
        onCanceled: place = 0
    }

    ToolTip {
        visible: slider.toolTip !== "" && mouse.containsMouse && !mouse.pressed
        delay: 600
        text: slider.toolTip
        palette: root.palette
        font.pixelSize: root.hintSize
    }
}
