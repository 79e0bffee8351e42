import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The name of a filter, and a button that sets its default name.
RowLayout {
    id: row

    required property var item
    required property int idWidth
    required property int actionWidth

    readonly property int filterID: item ? item.filterID : 0

    // Enter was pressed in the field.
    signal confirmed
    // The operator goes up or down by this many rows.
    signal stepped(rows: int)

    function edit() {
        box.forceActiveFocus(Qt.TabFocusReason)
    }

    spacing: 12

    PlainLabel {
        Layout.preferredWidth: row.idWidth
        Accessible.ignored: true
        text: row.filterID
        color: Look.headerTextColor
        horizontalAlignment: Text.AlignRight
    }

    TextBox {
        id: box

        Layout.fillWidth: true
        //: Accessible name; %1 is the number of a filter
        name: qsTr("Name %1").arg(row.filterID)
        modelText: row.item ? row.item.name : ""
        validator: RegularExpressionValidator {
            regularExpression: /.{1,199}$/
        }
        fault: acceptableInput
               ? ""
               //: Tool tip of a field: which names are allowed
               : qsTr("1 to 199 characters")
        Keys.onUpPressed: row.stepped(-1)
        Keys.onDownPressed: row.stepped(1)
        // The model has each text as soon as it is typed.
        onTextEdited: {
            row.item.name = text
            revert()
        }
        onAccepted: row.confirmed()
    }

    WrappingButton {
        Layout.preferredWidth: row.actionWidth
        enabled: row.item ? !row.item.isDefault : false
        //: Sets the name that the manufacturer gave to a filter
        text: qsTr("Reset to Default")
        Accessible.name: text + " " + row.filterID
        onClicked: row.item.useDefault()
    }
}
