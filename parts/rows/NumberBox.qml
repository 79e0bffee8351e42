import QtQuick
import zvt.look

// A field for a number within limits. What is no number, or out of the limits, stays and is marked until Esc; only an
// acceptable number is handed on, when Enter is pressed or the focus leaves.
TextBox {
    id: box

    property real from: 0
    property real to: Infinity
    property int decimals: 0
    // Whether a number is handed on when the focus leaves too, and not only when Enter is pressed.
    property bool takenOnLeaving: true

    // The number in the field; NaN if it is none.
    readonly property real number: Numbers.parse(text, decimals)
    readonly property bool acceptable: number >= from && number <= to

    // What is being typed is an acceptable number by now.
    signal typed(number: real)
    // A number was typed and is to be taken.
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
        if (takenOnLeaving)
            _take()
    }
}
