import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// A number field with a short caption, for a row with several of them.
RowLayout {
    id: field

    // Heading of the row, for the accessible name.
    required property string rowName
    required property string caption
    property alias modelText: box.modelText
    property alias boxWidth: box.implicitWidth
    property alias from: box.from
    property alias to: box.to
    property alias decimals: box.decimals
    readonly property alias inUse: box.activeFocus

    // The operator has finished typing an acceptable number.
    signal entered(number: real)

    spacing: 6

    PlainLabel {
        Layout.preferredWidth: 34
        Accessible.ignored: true
        opacity: enabled ? 1 : Look.disabledOpacity
        text: field.caption
        horizontalAlignment: Text.AlignRight
    }

    NumberBox {
        id: box

        name: field.rowName + " " + field.caption.slice(0, -1)
        onEntered: number => field.entered(number)
    }
}
