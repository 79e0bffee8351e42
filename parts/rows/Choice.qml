pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt.look

// A combo box for a fixed list of texts.
T.ComboBox {
    id: choice

    property string toolTip
    // Not from popup.visible: reading `popup` would create the popup long before it is needed.
    readonly property bool listOpen: down && !pressed

    // Opens the list. The open list handles the key itself.
    function _openBy(event: var) {
        event.accepted = !listOpen
        if (!listOpen)
            popup.open()
    }

    implicitWidth: 220
    implicitHeight: Look.rowHeight
    leftPadding: 8
    rightPadding: 30
    opacity: enabled ? 1 : Look.disabledOpacity
    Layout.preferredWidth: 220

    onHoveredChanged: {
        const cutOff = (contentItem as PlainLabel).truncated
        Hint.show(choice, hovered && !listOpen, (cutOff ? displayText + (toolTip && "\n") : "") + toolTip)
    }
    Keys.onReturnPressed: event => _openBy(event)
    Keys.onEnterPressed: event => _openBy(event)

    contentItem: PlainLabel {
        text: choice.displayText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    indicator: Rectangle {
        x: choice.width - width - 1
        y: 1
        width: 22
        height: choice.height - 2
        color: choice.hovered ? Look.buttonHoverColor : Look.buttonColor

        GlyphLabel {
            anchors.fill: parent
            text: Glyph.caretDown
        }
    }
    background: Rectangle {
        radius: Look.controlRadius
        color: Look.fieldColor
        border.color: Look.fieldFrameColor
    }
    delegate: OptionRow {
        required property int index
        required property string modelData

        width: ListView.view.width
        text: modelData
        current: index === choice.currentIndex
        highlighted: index === choice.highlightedIndex
    }
    popup: OptionPopup {
        contentItem: OptionView {
            model: choice.delegateModel
            currentIndex: choice.highlightedIndex
        }
    }
}
