import QtQuick
import QtQuick.Layouts
import zvt.look

// A field for one of the numbers of a window, with its heading.
RowLayout {
    id: field

    required property string heading
    property alias modelText: box.modelText
    property alias from: box.from
    property alias to: box.to
    property alias toolTip: box.toolTip
    property alias marked: box.marked
    readonly property alias acceptable: box.acceptable
    readonly property alias number: box.number

    // The text was edited, also to one that is not acceptable.
    signal edited
    // The text was edited and is an acceptable number.
    signal typed(number: int)

    // Discards the typed text and shows the model's again.
    function revert() {
        box.revert()
    }

    spacing: 8

    PlainLabel {
        Layout.preferredWidth: 70
        Accessible.ignored: true
        opacity: enabled ? 1 : Look.disabledOpacity
        text: field.heading
        horizontalAlignment: Text.AlignRight
    }

    NumberBox {
        id: box

        Layout.preferredWidth: 72
        name: field.heading.slice(0, -1)
        onTextEdited: field.edited()
        onTyped: number => field.typed(number)
        // Another number, from the picture or the camera, replaces a typed text.
        onModelTextChanged: {
            if (Numbers.parse(text, decimals) !== Number(modelText))
                revert()
        }
    }
}
