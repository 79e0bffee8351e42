import QtQuick

// The mark at the end of a field: shows that the camera has answered, and warns if the camera keeps another value than
// the operator typed.
GlyphLabel {
    id: mark

    // The text that the field shows.
    property string fieldText

    readonly property alias hovered: hover.hovered

    // The typed number, until the camera's answer to it has come; NaN otherwise.
    property real _expectedNumber: NaN
    property bool _differs

    // Shows the mark and fades it out, unless it shows a warning.
    function showUpdated() {
        if (_differs)
            return
        fade.stop()
        color = Look.strongTextColor
        visible = true
        if (!hovered)
            fade.start()
    }

    // The number in `text` was sent to the camera: warns if `fieldText` then shows another number within 10 seconds.
    function expect(text: string) {
        forget()
        _expectedNumber = Numbers.parse(text, -1)
        deadline.restart()
    }

    // Expects no answer any more, and hides the mark.
    function forget() {
        _expectedNumber = NaN
        _differs = false
        fade.stop()
        visible = false
    }

    function _compare() {
        const kept = Numbers.parse(fieldText, -1)
        if (isNaN(_expectedNumber) || isNaN(kept))
            return
        _differs = Math.abs(kept - _expectedNumber) > 0.51 * Numbers.lastPlace(fieldText)
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
    onFieldTextChanged: _compare()

    HoverHandler {
        id: hover
        onHoveredChanged: {
            mark.showUpdated()
            Hint.show(mark, hovered, mark.Accessible.name)
        }
    }

    // A value that comes later is not the answer to the typed number.
    Timer {
        id: deadline
        interval: 10000
        onTriggered: mark._expectedNumber = NaN
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
