pragma Singleton
import QtQuick

// Numbers as the operator's locale writes them.
QtObject {
    //: Tool tip of a field that does not hold a number
    readonly property string faultText: qsTr("Not a number")

    // The number in the text; NaN if it is none, or has more than that many decimals. A negative count allows any number.
    function parse(text: string, decimals: int): real {
        if (text.search(/\S/) < 0 || (decimals >= 0 && !_isPlain(text, decimals)))
            return NaN
        try {
            const number = Number.fromLocaleString(text)
            // The locale reads "inf" too.
            return isFinite(number) ? number : NaN
        } catch (error) {
            return NaN
        }
    }

    // What the last digit of a number counts: 0.01 with two decimals.
    function lastPlace(text: string): real {
        return Math.pow(10, -_decimals(text))
    }

    function _decimals(text: string): int {
        const point = text.indexOf(Qt.locale().decimalPoint)
        return point < 0 ? 0 : text.length - point - 1
    }

    // Without an exponent, and with no more decimals than that.
    function _isPlain(text: string, decimals: int): bool {
        if (decimals === 0 && text.indexOf(Qt.locale().decimalPoint) >= 0)
            return false
        return _decimals(text) <= decimals && text.search(/[a-z]/i) < 0
    }
}
