import QtQuick
import QtQuick.Controls

// A row with a text field. `value` is bound to the model; edited() reports the text that the user has entered with Return
// or by leaving the field. While the user edits the text, it does not follow `value`. After edited() the field shows
// `value` again, unless `error` is set at once: then the refused text stays until it is corrected or Esc is pressed. If
// `error` is set later, when the camera has refused the text, the field shows `value`, with the reason below it.
CardRow {
    id: row

    property string value: ""
    property string unit: ""
    // The range or the form of the text, shown while the field is empty.
    property alias hint: field.placeholderText
    // Why the text was refused; empty if it was not.
    property string error: ""

    signal edited(text: string)
    // The user has dropped a refused text.
    signal dropped()

    property bool _isEdited: false

    function _finish() {
        if (!_isEdited)
            return
        row.edited(field.text)
        _isEdited = row.error !== ""
    }

    Binding {
        target: field
        property: "text"
        value: row.value
        when: !row._isEdited
        restoreMode: Binding.RestoreNone
    }

    TextField {
        id: field

        width: parent.width - (suffix.text ? suffix.implicitWidth + DeskLook.spacing : 0)
        height: DeskLook.rowHeight
        selectByMouse: true
        font.pixelSize: DeskLook.textSize
        placeholderTextColor: DeskLook.dimTextColor
        color: row.error ? DeskLook.errorColor : DeskLook.strongTextColor
        onTextEdited: row._isEdited = true
        onEditingFinished: row._finish()
        Keys.onEscapePressed: event => {
            event.accepted = text !== row.value || row.error !== ""
            row._isEdited = false
            row.dropped()
        }

        Accessible.name: row.name
    }

    Text {
        id: suffix

        anchors.right: parent.right
        height: DeskLook.rowHeight
        verticalAlignment: Text.AlignVCenter
        text: row.unit
        color: DeskLook.dimTextColor
        font.pixelSize: DeskLook.textSize
    }

    // In an item of its own, since a wrapped text whose height depends on its own text is a binding loop.
    Item {
        y: DeskLook.rowHeight
        width: parent.width
        height: row.error ? reason.implicitHeight : 0
        visible: row.error !== ""

        Text {
            id: reason

            width: parent.width
            text: row.error
            wrapMode: Text.Wrap
            color: DeskLook.errorColor
            font.pixelSize: DeskLook.hintSize
        }
    }
}
