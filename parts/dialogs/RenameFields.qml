import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The current name of a state or a correction, and a field for its new name.
GridLayout {
    id: fields

    property alias oldName: oldBox.modelText
    property alias maximumBytes: newBox.maximumBytes
    readonly property alias newName: newBox.text
    readonly property alias firstField: newBox

    signal confirmed

    columns: 2
    columnSpacing: 12
    rowSpacing: Look.rowSpacing

    PlainLabel {
        id: oldLabel

        Layout.alignment: Qt.AlignRight
        Accessible.ignored: true
        //: The current name of a state or a correction
        text: qsTr("Old Name")
    }

    TextBox {
        id: oldBox

        Layout.fillWidth: true
        name: oldLabel.text
        readOnly: true
    }

    PlainLabel {
        id: newLabel

        Layout.alignment: Qt.AlignRight
        Accessible.ignored: true
        //: The new name of a state or a correction
        text: qsTr("New Name")
    }

    TextBox {
        id: newBox

        Layout.fillWidth: true
        name: newLabel.text
        onAccepted: fields.confirmed()
    }
}
