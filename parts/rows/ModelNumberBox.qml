import QtQuick

// A field for a number of the camera, empty until the number has been read. Any number of decimals can be typed.
NumberBox {
    id: box

    required property ModelBody section
    // The number of the model, which is 0 before it is read, and its signal; null without a model.
    required property real value
    required property var notifier
    required property int shownDecimals
    property bool usable: true

    // The operator has entered a number, and there is a model to take it.
    signal sent(number: real)

    enabled: usable && (!section.refreshing || activeFocus)
    decimals: -1
    modelText: fact.wasRead ? section.text(value, shownDecimals) : ""
    onEntered: number => {
        if (section.camera)
            sent(number)
    }

    ReadFact {
        id: fact

        notifier: box.notifier
        reading: box.section.refreshing
        differs: box.value !== 0
    }
}
