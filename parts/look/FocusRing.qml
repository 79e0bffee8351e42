import QtQuick
import QtQuick.Templates as T

// The ring around the item with keyboard focus. A page has one, which moves from control to control.
Rectangle {
    // The item with the focus, or null.
    property Item focusItem: null

    // As var, because only some items have the property ringOutset.
    readonly property var _untypedItem: focusItem
    // Controls show the ring only if they got the focus by keyboard; text fields and other items always.
    readonly property bool _byKeyboard: focusItem instanceof T.Control ? focusItem.visualFocus
                                                                       : focusItem !== null && focusItem.activeFocusOnTab
    // Distance of the ring from the control in pixels. Negative for controls at the edge of the window: the ring is
    // inside.
    readonly property real _outset: _untypedItem && _untypedItem.ringOutset !== undefined ? _untypedItem.ringOutset : 4

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
