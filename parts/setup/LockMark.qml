import QtQuick
import zvt.look

// Shows that the controls of the lens are locked: a spinner at first, since most moves are short, and after 10 seconds
// a lock with a tool tip.
Loader {
    id: mark

    required property bool locked
    property bool _lockedLong

    active: locked
    visible: locked
    sourceComponent: _lockedLong ? lock : busy
    onLockedChanged: _lockedLong = false

    Timer {
        objectName: "lockTimer"
        interval: 10000
        running: mark.locked && !mark._lockedLong
        onTriggered: mark._lockedLong = true
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
