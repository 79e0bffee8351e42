import QtQuick
import zvt.look

// A field for a number from `from` to `to`. A text that is not a number or is out of range stays in the field, marked
// as wrong, until Esc restores the model's text. An acceptable number is emitted by `entered` when the operator presses
// Enter or the focus leaves.
TextBox {
    id: box

    property real from: 0
    property real to: Infinity
    // The largest accepted number of decimals; any number of them if negative.
    property int decimals: 0
    // Whether a number is also entered when the focus leaves, and not only when Enter is pressed.
    property bool commitsOnFocusLoss: true

    // The number in the field; NaN if the text is not a number.
    readonly property real number: Numbers.parse(text, decimals)
    readonly property bool acceptable: number >= from && number <= to

    // The text was edited and is an acceptable number.
    signal typed(number: real)
    // The operator has finished typing an acceptable number.
    signal entered(number: real)
    // Enter was pressed on an acceptable number. Follows `entered`.
    signal confirmed

    function _commit() {
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
        const wasAcceptable = acceptable
        _commit()
        if (wasAcceptable)
            confirmed()
    }
    onEditingFinished: {
        // A field also loses the focus when it is disabled, which can happen while the operator types.
        if (commitsOnFocusLoss && !Fields.isDisabled(box))
            _commit()
    }
}
