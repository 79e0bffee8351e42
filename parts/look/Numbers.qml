pragma Singleton
import QtQuick

// Reads numbers in the format of the operator's locale.
QtObject {
    //: Tool tip of a field that does not hold a number
    readonly property string faultText: qsTr("Not a number")

    // A number of decimals that no text exceeds.
    readonly property int anyDecimals: 1000
    readonly property real largestFloat: 3.4028234663852886e38

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

    // Returns a model's number of type float with seven digits: 3.3 for 3.29999995.
    function ofFloat(number: real): real {
        if (number === 0 || !isFinite(number))
            return number
        const digits = 7
        const scale = Math.pow(10, digits - Math.ceil(Math.log10(Math.abs(number))))
        return Math.round(number * scale) / scale
    }

    // A limit as the operator types it, without group separators: a whole number with all its digits, another one and a
    // very large one with six of them.
    function limitText(limit: real): string {
        const isWhole = limit % 1 === 0 && Math.abs(limit) < 1e15
        const plain = isWhole ? String(limit) : "%1".arg(limit)
        return plain.split(".").join(Qt.locale().decimalPoint)
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
