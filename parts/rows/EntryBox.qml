import QtQuick
import zvt.look

// A text field whose text is entered when the operator presses Enter or the focus leaves. A text that is not acceptable
// stays in the field until Esc restores the model's text.
TextBox {
    id: box

    // Whether the text can be entered.
    property bool acceptable: true
    // Whether a text is also entered when the focus leaves, and not only when Enter is pressed.
    property bool commitsOnFocusLoss: true

    // The operator has finished typing an acceptable text.
    signal textEntered(text: string)
    // Enter was pressed on an acceptable text. Follows `textEntered`.
    signal confirmed

    function _commit() {
        if (!edited || !acceptable)
            return
        const typed = text
        revert()
        textEntered(typed)
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
