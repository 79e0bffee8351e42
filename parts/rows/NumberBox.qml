import QtQuick
import zvt.look

// A field for a number from `from` to `to`; if `from` is greater, it accepts none. A text that is not a number, is out
// of range or is refused by `judge` stays in the field, marked as wrong, until Esc restores the model's text. An
// acceptable number is emitted by `entered` when the operator presses Enter or the focus leaves.
EntryBox {
    id: box

    property real from: 0
    property real to: Infinity
    // The largest accepted number of decimals; any number of them if negative.
    property int decimals: 0
    // An invisible input with a validator for further rules; null without any. It gets the texts of the field. A
    // validator of the field itself would ignore keys without feedback.
    property TextInput judge
    // Why the judge refuses a number, or why no number is accepted, as tool tip.
    property string refusal

    // The number in the field; NaN if the text is not a number.
    readonly property real number: Numbers.parse(text, decimals)
    readonly property bool _inRange: number >= from && number <= to

    // The text was edited and is an acceptable number.
    signal typed(number: real)
    // The operator has finished typing an acceptable number. Precedes `confirmed`.
    signal entered(number: real)

    function _rangeFault(): string {
        if (number < from && to >= Numbers.largestFloat)
            //: Tool tip of a field; %1 is a number
            return qsTr("Must be %1 or more").arg(Numbers.limitText(from))
        if (number > to && from <= -Numbers.largestFloat)
            //: Tool tip of a field; %1 is a number
            return qsTr("Must be %1 or less").arg(Numbers.limitText(to))
        //: Tool tip of a field; %1 and %2 are numbers
        return qsTr("Not between %1 and %2").arg(Numbers.limitText(from)).arg(Numbers.limitText(to))
    }

    acceptable: _inRange && (judge ? judge.acceptableInput : true)
    horizontalAlignment: Text.AlignRight
    fault: !edited || acceptable ? "" : isNaN(number) ? Numbers.faultText
           : _inRange || (from > to && refusal !== "") ? refusal : _rangeFault()
    onJudgeChanged: {
        if (judge)
            judge.text = text
    }
    onTextChanged: {
        if (judge)
            judge.text = text
        // `number` and `acceptable` may still be those of the last text.
        const present = Numbers.parse(text, decimals)
        if (edited && present >= from && present <= to && (judge ? judge.acceptableInput : true))
            typed(present)
    }
    onTextEntered: text => entered(Numbers.parse(text, decimals))
}
