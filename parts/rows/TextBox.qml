import QtQuick
import QtQuick.Templates as T
import zvt.look

// A field of one line. It shows what the model holds, except while something else has been typed; Esc takes that back.
T.TextField {
    id: box

    // What the model holds.
    property string shown
    property string name
    property string toolTip
    // Why the text on show is not taken; empty if it is.
    property string fault
    // Whether the field is red for a reason outside of it.
    property bool marked

    // Something has been typed and neither been taken nor taken back.
    readonly property alias edited: edit.present

    // The text is on show until the model has another one.
    function revert() {
        edit.present = false
    }

    implicitWidth: 92
    implicitHeight: Look.rowHeight
    leftPadding: 8
    rightPadding: 8
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    text: edit.present ? edit.text : shown
    color: Look.fieldTextColor
    placeholderTextColor: Look.dimTextColor
    selectionColor: Look.kestrinAccentBlue
    selectedTextColor: Look.inverseTextColor
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.name: name

    Keys.onEscapePressed: event => {
        event.accepted = edited
        revert()
    }
    onTextEdited: {
        edit.text = text
        edit.present = true
    }
    onActiveFocusChanged: {
        if (activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason))
            selectAll()
    }
    onHoveredChanged: Hint.show(box, hovered, fault || toolTip)

    background: Rectangle {
        radius: Look.controlRadius
        color: box.readOnly ? "transparent" : box.fault || box.marked ? Look.errorBackColor : Look.fieldColor
        border.color: box.fault || box.marked ? Look.errorFrameColor : Look.fieldFrameColor
    }

    PlainLabel {
        anchors.fill: parent
        leftPadding: box.leftPadding
        visible: box.placeholderText !== "" && box.text === "" && box.preeditText === ""
        Accessible.ignored: true
        text: box.placeholderText
        color: box.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
    }

    QtObject {
        id: edit

        property bool present
        property string text
    }
}
