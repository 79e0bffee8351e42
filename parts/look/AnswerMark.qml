import QtQuick

// The mark at the end of a field: shows that the camera has answered, and warns when it keeps another value than the one
// that was typed.
GlyphLabel {
    id: mark

    // The value on show in the field.
    property string shown

    readonly property alias hovered: hover.hovered

    // The number that was typed, while its answer is awaited; NaN otherwise.
    property real _asked: NaN
    property bool _differs

    function showUpdated() {
        if (_differs)
            return
        fade.stop()
        color = Look.strongTextColor
        visible = true
        if (!hovered)
            fade.start()
    }

    // The number in the text is on its way to the camera.
    function expect(text: string) {
        forget()
        _asked = Numbers.parse(text, -1)
        due.restart()
    }

    // Drops the number that was typed, and hides the mark.
    function forget() {
        _asked = NaN
        _differs = false
        fade.stop()
        visible = false
    }

    function _compare() {
        const kept = Numbers.parse(shown, -1)
        if (isNaN(_asked) || isNaN(kept))
            return
        _differs = Math.abs(kept - _asked) > 0.51 * Numbers.lastPlace(shown)
        if (_differs) {
            fade.stop()
            color = Look.kestrinSecondaryGold
            visible = true
        }
    }

    objectName: "updateMark"
    visible: false
    text: _differs ? Glyph.warning : Glyph.apply + "\u2009" + Glyph.info
    Accessible.ignored: false
    Accessible.name: _differs
                     //: Tool tip of a mark beside a value
                     ? qsTr("The camera kept another value than the one typed.")
                     //: Tool tip of a mark beside an integration time
                     : qsTr("The integration time has been updated. It may have been adjusted to the nearest valid value.")
    onShownChanged: _compare()

    HoverHandler {
        id: hover
        onHoveredChanged: {
            mark.showUpdated()
            Hint.show(mark, hovered, mark.Accessible.name)
        }
    }

    // A later value is not the answer.
    Timer {
        id: due
        interval: 10000
        onTriggered: mark._asked = NaN
    }

    SequentialAnimation {
        id: fade

        objectName: "updateFade"

        PauseAnimation {
            duration: 1500
        }

        ColorAnimation {
            target: mark
            property: "color"
            to: Look.pastColor
            duration: 1100
        }

        PauseAnimation {
            duration: 4000
        }

        ColorAnimation {
            target: mark
            property: "color"
            to: "transparent"
            duration: 600
        }

        PropertyAction {
            target: mark
            property: "visible"
            value: false
        }
    }
}
