import QtQuick

// A row with a number field.
SettingRow {
    id: row

    property alias modelText: box.modelText
    property alias from: box.from
    property alias to: box.to
    property alias decimals: box.decimals

    // The operator has finished typing an acceptable number.
    signal entered(number: real)

    NumberBox {
        id: box

        name: row.name
        toolTip: row.toolTip
        onEntered: number => row.entered(number)
    }
}
