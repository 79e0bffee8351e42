import QtQuick
import QtQuick.Templates as T
import zvt.look

// A text field of one line. It shows the model's text until the operator types; Esc restores the model's text.
T.TextField {
    id: box

    // The model's text, shown while the operator has typed nothing.
    property string modelText
    property string name
    property string toolTip
    // Why the shown text is not accepted, as tool tip. Empty if it is accepted.
    property string fault
    // Whether the field is shown as wrong without a fault in its own text.
    property bool marked
    // How long a text the operator can type or paste, in bytes of UTF-8. The rest is left out. 0: no limit. A longer
    // text of the model is shown in full, and cannot become longer.
    property int maximumBytes

    // The operator has typed something that was neither accepted nor reverted.
    readonly property alias edited: edit.present

    // Discards the typed text and shows the model's again.
    function revert() {
        edit.present = false
    }

    function _utf8Size(text: string): int {
        let bytes = 0
        for (const character of text) {
            const code = character.codePointAt(0)
            bytes += code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4
        }
        return bytes
    }

    // Takes back the end of what was typed or pasted, which is before the cursor, so that the text is never longer than
    // the limit or the text before.
    function _shorten() {
        const typed = text
        const before = edit.present ? edit.text : modelText
        let excess = _utf8Size(typed) - Math.max(maximumBytes, _utf8Size(before))
        let start = cursorPosition
        while (excess > 0 && start > 0) {
            const end = start
            const isSecondHalf = /[\uDC00-\uDFFF]/.test(typed.charAt(end - 1))
            start -= isSecondHalf ? 2 : 1
            excess -= _utf8Size(typed.slice(start, end))
        }
        remove(start, cursorPosition)
    }

    implicitWidth: 92
    implicitHeight: Look.rowHeight
    leftPadding: 8
    rightPadding: 8
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    text: edit.present ? edit.text : modelText
    color: Look.fieldTextColor
    placeholderTextColor: Look.dimTextColor
    selectionColor: Look.kestrinAccentBlue
    selectedTextColor: Look.inverseTextColor
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: name

    Keys.onEscapePressed: event => {
        event.accepted = edited
        revert()
    }
    onTextEdited: {
        if (maximumBytes > 0)
            _shorten()
        edit.text = text
        edit.present = true
    }
    onActiveFocusChanged: {
        if (activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason))
            selectAll()
    }
    onHoveredChanged: Hint.show(box, hovered, fault || toolTip)
    onFaultChanged: Hint.show(box, false, "")

    background: Rectangle {
        radius: Look.controlRadius
        color: box.readOnly ? "transparent" : box.fault || box.marked ? Look.errorBackColor : Look.fieldColor
        border.color: box.fault || box.marked ? Look.errorFrameColor : Look.fieldFrameColor
    }

    PlainLabel {
        anchors.fill: parent
        leftPadding: box.leftPadding
        visible: box.placeholderText !== "" && box.text === "" && box.preeditText === ""
        Accessible.ignored: true
        text: box.placeholderText
        color: box.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
    }

    QtObject {
        id: edit

        property bool present
        property string text
    }
}
