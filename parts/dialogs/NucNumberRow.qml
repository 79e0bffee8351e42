import QtQuick
import zvt.rows

// A row with a field for a number of the correction wizard. The camera judges the number when the run starts, so the
// field accepts every number that its setting can take over: the whole ones that fit into 32 bits, or all of them.
SettingRow {
    id: row

    property alias modelText: box.modelText
    // Whether the number may have decimals.
    property bool fractional

    signal entered(number: real)
    // Enter was pressed in the field.
    signal confirmed

    NumberBox {
        id: box

        name: row.name
        from: row.fractional ? -Infinity : -2147483648
        to: row.fractional ? Infinity : 2147483647
        decimals: row.fractional ? -1 : 0
        onEntered: number => row.entered(number)
        onConfirmed: row.confirmed()
    }
}
