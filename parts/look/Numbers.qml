pragma Singleton
import QtQuick

// Reads numbers in the format of the operator's locale.
QtObject {
    //: Tool tip of a field that does not hold a number
    readonly property string faultText: qsTr("Not a number")

    // The number in the text; NaN if the text is not a finite number or has more than `decimals` decimals. A negative
    // `decimals` allows any number of decimals and an exponent.
    function parse(text: string, decimals: int): real {
        if (text.search(/\S/) < 0 || (decimals >= 0 && !_isPlain(text, decimals)))
            return NaN
        try {
            const number = Number.fromLocaleString(text)
            // The locale also reads "inf".
            return isFinite(number) ? number : NaN
        } catch (error) {
            return NaN
        }
    }

    // A limit as text: a whole number with all its digits, another one with six of them.
    function limitText(limit: real): string {
        return limit % 1 === 0 ? String(limit) : "%1".arg(limit)
    }

    // The value of one unit of the last digit: 0.01 for a text with two decimals.
    function lastPlace(text: string): real {
        return Math.pow(10, -_decimals(text))
    }

    function _decimals(text: string): int {
        const point = text.indexOf(Qt.locale().decimalPoint)
        return point < 0 ? 0 : text.length - point - 1
    }

    // Whether the text has no letters, so no exponent, and at most `decimals` decimals.
    function _isPlain(text: string, decimals: int): bool {
        if (decimals === 0 && text.indexOf(Qt.locale().decimalPoint) >= 0)
            return false
        return _decimals(text) <= decimals && text.search(/[a-z]/i) < 0
    }
}
