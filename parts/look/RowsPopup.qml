pragma ComponentBehavior: Bound

import QtQuick

// The list of a box whose rows are texts. The box handles the keys and sets the highlighted row.
OptionPopup {
    id: popup

    property var rows: []
    // The row in use.
    property int currentIndex: -1
    // The sign of the first row, if any.
    property string firstSign

    signal chosen(index: int)

    objectName: "popup"
    closePolicy: OptionPopup.CloseOnPressOutsideParent

    contentItem: OptionView {
        id: view

        model: popup.rows
        delegate: OptionRow {
            required property int index
            required property string modelData

            width: view.width
            text: modelData
            sign: index === 0 ? popup.firstSign : ""
            current: index === popup.currentIndex
            highlighted: index === view.currentIndex
            onClicked: popup.chosen(index)
            onHoveredChanged: {
                if (hovered)
                    view.currentIndex = index
            }
        }
    }
}
