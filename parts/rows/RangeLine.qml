import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look

// Shows "minimum / value / maximum". A click on the value replaces it by a field for a whole number. Enter and the check
// button accept the number; Esc and the cross discard it. The value then has the keyboard focus again.
RowLayout {
    id: line

    required property string name
    property string toolTip
    required property real minimum
    required property real maximum
    required property real value
    // Shown in place of the three numbers. Empty: the numbers are shown. The field closes when this changes.
    property string placeholder
    // Whether the value can be clicked.
    property bool usable: true
    // Whether the field can be open.
    property bool mayEdit: visible
    property bool editing
    // Whether the field was opened by keyboard.
    property bool _openedByKeyboard

    signal entered(number: real)

    function _shown(number: real): string {
        return placeholder === "" ? String(number) : placeholder
    }

    function _open() {
        _openedByKeyboard = current.visualFocus
        editing = true
    }

    function _close() {
        const hadFocus = editor.activeFocus
        editing = false
        if (hadFocus)
            current.forceActiveFocus(_openedByKeyboard ? Qt.TabFocusReason : Qt.OtherFocusReason)
    }

    spacing: 6
    onPlaceholderChanged: _close()
    onMayEditChanged: {
        if (!mayEdit)
            editing = false
    }

    PlainLabel {
        text: line._shown(line.minimum) + " /"
        color: Look.dimTextColor
    }

    WrappingButton {
        id: current

        visible: !line.editing
        enabled: line.usable
        // Wide enough for the longest number, so that nothing moves when the value changes.
        implicitWidth: Math.ceil(Math.max(longest.advanceWidth, implicitContentWidth)) + leftPadding + rightPadding
        text: line._shown(line.value)
        textColor: Look.fieldTextColor
        toolTip: line.toolTip
        Accessible.name: line.name
        onClicked: line._open()

        TextMetrics {
            id: longest

            font: current.font
            text: line.maximum
        }

        background: Rectangle {
            radius: Look.controlRadius
            color: current.hovered ? Look.rowHoverColor : Look.fieldColor
            border.color: Look.fieldFrameColor
        }
    }

    Loader {
        id: editor

        active: line.editing
        visible: active
        sourceComponent: RowLayout {
            spacing: 6

            NumberBox {
                id: field

                commitsOnFocusLoss: false
                name: line.name
                from: line.minimum
                to: line.maximum
                modelText: line.value
                Keys.onEscapePressed: event => {
                    event.accepted = true
                    line._close()
                }
                // Closes the field first: what `entered` does may depend on it.
                onEntered: number => {
                    line._close()
                    line.entered(number)
                }
                onConfirmed: line._close()
                Component.onCompleted: {
                    forceActiveFocus(Qt.OtherFocusReason)
                    selectAll()
                }
            }

            GlyphButton {
                enabled: field.acceptable
                glyph: Glyph.apply
                //: Tool tip: applies the typed number
                toolTip: qsTr("Apply")
                onClicked: field.accepted()
            }

            GlyphButton {
                glyph: Glyph.cross
                //: Tool tip: discards the typed number
                toolTip: qsTr("Cancel")
                onClicked: line._close()
            }
        }
    }

    PlainLabel {
        text: "/ " + line._shown(line.maximum)
        color: Look.dimTextColor
    }
}
