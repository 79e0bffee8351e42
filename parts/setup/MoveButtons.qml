pragma ComponentBehavior: Bound

import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// Buttons for three speeds in each direction. A button moves the lens while it is held; release, cancel, hiding and
// destruction stop the move. A held button stays enabled when its press locks the lens, so that its release is not
// lost.
Item {
    id: buttons

    required property ZvtCameraModel camera
    required property bool connected
    required property bool unlocked
    required property bool isShown
    // The tool tips of the buttons, from left to right.
    required property var names
    // Whether one of the buttons is held.
    property bool controlHeld

    readonly property int _slow: camera ? camera.setupTabModel.slowSpeedStep : 0
    readonly property int _medium: camera ? camera.setupTabModel.mediumSpeedStep : 0
    readonly property int _fast: camera ? camera.setupTabModel.fastSpeedStep : 0
    readonly property var _speeds: [-_fast, -_medium, -_slow, _slow, _medium, _fast]

    readonly property int _spacing: 4
    readonly property int _middle: 16
    readonly property real _buttonWidth: Math.floor((width - 4 * _spacing - _middle) / 6)

    // Speed 0 stops the move.
    signal move(speed: int)

    implicitWidth: 6 * 44 + 4 * _spacing + _middle
    implicitHeight: Look.rowHeight

    Repeater {
        model: ["< < <", "< <", "<", ">", "> >", "> > >"]

        WrappingButton {
            id: button

            required property int index
            required property string modelData
            property bool held

            readonly property bool _onScreen: visible && buttons.isShown

            function _stop() {
                if (!held)
                    return
                held = false
                buttons.move(0)
            }

            x: index * (width + buttons._spacing) + (index > 2 ? buttons._middle - buttons._spacing : 0)
            width: buttons._buttonWidth
            enabled: buttons.connected && (buttons.unlocked || held)
            leftPadding: 2
            rightPadding: 2
            text: modelData
            toolTip: buttons.names[index]
            Accessible.name: toolTip
            onHeldChanged: buttons.controlHeld = held
            onPressed: {
                held = true
                buttons.move(buttons._speeds[index])
            }
            onReleased: _stop()
            onCanceled: _stop()
            // A button that is hidden, alone or with its window or page, emits no released or canceled.
            on_OnScreenChanged: _stop()
            Component.onDestruction: _stop()
            // Without this, the repetition of a held key would stop and start the move repeatedly.
            Keys.onPressed: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space
            Keys.onReleased: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space
        }
    }
}
