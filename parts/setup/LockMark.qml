import QtQuick
import zvt.look

// Shows that the controls of the lens are locked: a spinner at first, since most moves are short, and a lock with a tool
// tip when they stay locked.
Loader {
    id: mark

    required property bool locked
    property bool _lasting

    active: locked
    visible: locked
    sourceComponent: _lasting ? lock : busy
    onLockedChanged: _lasting = false

    Timer {
        objectName: "lockTimer"
        interval: 10000
        running: mark.locked && !mark._lasting
        onTriggered: mark._lasting = true
    }

    Component {
        id: busy

        Spinner {
            objectName: "lockBusy"
        }
    }

    Component {
        id: lock

        GlyphLabel {
            id: glyph

            width: 16
            height: 16
            text: Glyph.lock
            color: Look.headerTextColor
            Accessible.ignored: false
            //: Tool tip of a lock
            Accessible.name: qsTr("The lens moves, or stands in manual focus")

            HoverHandler {
                onHoveredChanged: Hint.show(glyph, hovered, glyph.Accessible.name)
            }
        }
    }
}
