import QtQuick

// A row with a field for a number of the camera, empty until the number has been read.
SettingRow {
    id: row

    required property ModelBody section
    // See ModelNumberBox.
    required property real value
    required property var notifier
    property int decimals: 0
    property bool usable: true
    property alias from: box.from
    property alias to: box.to

    // The operator has entered a number, and there is a model to take it.
    signal sent(number: real)

    ModelNumberBox {
        id: box

        section: row.section
        name: row.name
        toolTip: row.toolTip
        value: row.value
        notifier: row.notifier
        decimals: row.decimals
        shownDecimals: row.decimals
        usable: row.usable
        onSent: number => row.sent(number)
    }
}
