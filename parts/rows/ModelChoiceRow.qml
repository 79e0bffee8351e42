import QtQuick

// A row with a combo box for a choice of the camera, without a selection until the choice has been read.
ChoiceRow {
    id: row

    required property ModelBody section
    // The index of the model, and its signal; null without a model.
    required property int value
    required property var notifier
    // The index of a model that has read nothing.
    property int unreadValue: 0
    property bool usable: true

    // The operator has chosen a row, and there is a model to take it.
    signal chosen(index: int)

    enabled: usable && (!section.refreshing || listOpen)
    // Depends on `model`, since a new list selects its first row, and on `signals`, since an unchanged value replaces a
    // refused choice.
    currentIndex: model && fact.signals >= 0 && fact.wasRead ? value : -1
    onActivated: index => {
        if (section.camera)
            chosen(index)
    }

    ReadFact {
        id: fact

        notifier: row.notifier
        reading: row.section.refreshing
        differs: row.value !== row.unreadValue
    }
}
