import QtQuick
import QtQuick.Templates as T

// The ring around what has the keyboard focus. A page has one, which moves from control to control.
Rectangle {
    // What has the focus, if anything.
    property Item focusItem: null

    // As a value of any type, since few items have the property ringOutset.
    readonly property var _any: focusItem
    // Fields show where typing goes, whatever gave them the focus; other controls only the focus by keyboard.
    readonly property bool _byKeyboard: focusItem instanceof T.Control ? focusItem.visualFocus
                                                                       : focusItem !== null && focusItem.activeFocusOnTab
    // A control at the edge of the window has its ring inside.
    readonly property real _outset: _any && _any.ringOutset !== undefined ? _any.ringOutset : 4

    parent: focusItem
    visible: _byKeyboard
    anchors.fill: parent
    anchors.margins: -_outset
    z: 1
    radius: 6
    color: "transparent"
    border.width: 2
    border.color: Look.kestrinAccentBlue
}
