import QtQuick
import zvt.look

// A field for a number within limits. A text that is not a number, or is out of the limits, stays and is marked until
// Esc. Only an acceptable number is handed on, when Enter is pressed or the focus leaves.
TextBox {
    id: box

    property real from: 0
    property real to: Infinity
    property int decimals: 0
    // Whether a number is handed on when the focus leaves too, and not only when Enter is pressed.
    property bool takenOnLeaving: true

    // The number in the field; NaN if the text is not a number.
    readonly property real number: Numbers.parse(text, decimals)
    readonly property bool acceptable: number >= from && number <= to

    // The text was edited and is an acceptable number.
    signal typed(number: real)
    // The operator has finished typing an acceptable number.
    signal entered(number: real)
    // Enter was pressed on an acceptable number, after it was handed on.
    signal confirmed

    function _take() {
        if (!edited || !acceptable)
            return
        const typed = number
        revert()
        entered(typed)
    }

    horizontalAlignment: Text.AlignRight
    //: Tool tip of a field; %1 and %2 are numbers
    fault: !edited || acceptable ? "" : isNaN(number) ? Numbers.faultText : qsTr("Not between %1 and %2").arg(from).arg(to)
    onTextChanged: {
        const present = Numbers.parse(text, decimals)
        if (edited && present >= from && present <= to)
            typed(present)
    }
    onAccepted: {
        const taken = acceptable
        _take()
        if (taken)
            confirmed()
    }
    onEditingFinished: {
        // A field that is disabled loses the focus too, in the middle of typing.
        if (takenOnLeaving && !Fields.isDisabled(box))
            _take()
    }
}
