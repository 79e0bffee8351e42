pragma ComponentBehavior: Bound

import QtQuick

// The drop-down list of a combo box whose rows are texts. The box handles the keys and sets the highlighted row.
OptionPopup {
    id: popup

    property var rows: []
    // The current row; -1 for none.
    property int currentIndex: -1
    // A glyph at the end of the first row; none if empty.
    property string firstRowIcon

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
            endIcon: index === 0 ? popup.firstRowIcon : ""
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
