import QtQuick
import zvt.look
import zvt.rows

// The base of the two fields for the range of a batch entry: their labels and places.
Item {
    id: fields

    // The number of the row, for the accessible names.
    required property int number
    required property bool inTabChain
    required property TextBox startBox
    required property TextBox endBox

    //: Accessible name of a field; %1 is the number of a row
    readonly property string startName: qsTr("Start %1").arg(number)
    //: Accessible name of a field; %1 is the number of a row
    readonly property string endName: qsTr("End %1").arg(number)
    //: Tool tip of the fields of a range
    readonly property string orderText: qsTr("The end is before the start")
    readonly property int fieldWidth: 132
    readonly property int startX: 42
    readonly property int endX: 222

    function revert() {
        startBox.revert()
        endBox.revert()
    }

    component Caption: PlainLabel {
        height: Look.rowHeight
        width: 36
        Accessible.ignored: true
        opacity: enabled ? 1 : Look.disabledOpacity
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
    }

    implicitWidth: endX + fieldWidth
    implicitHeight: Look.rowHeight

    Caption {
        //: The first frame or the first time of a range
        text: qsTr("Start:")
    }

    Caption {
        x: fields.endX - fields.startX
        //: The last frame or the last time of a range
        text: qsTr("End:")
    }
}
