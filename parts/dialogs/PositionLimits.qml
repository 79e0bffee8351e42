import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// Fields for the nearest and the farthest focus position of one field of view.
ColumnLayout {
    id: limits

    required property string fieldOfView
    // The range of focus positions, and whether positions increase from near to far.
    required property int minimum
    required property int maximum
    required property bool ascending

    readonly property alias firstField: nearBox
    readonly property alias near: nearBox.number
    readonly property alias far: farBox.number
    readonly property bool inRange: nearBox.acceptable && farBox.acceptable
    // The order is checked only if both positions are in range.
    readonly property bool ordered: !inRange || (ascending ? near <= far : near >= far)

    // Enter was pressed in a field that holds an acceptable position.
    signal confirmed

    function show(nearPosition: int, farPosition: int) {
        nearBox.show(nearPosition)
        farBox.show(farPosition)
    }

    component PositionBox: NumberBox {
        function show(position: int) {
            modelText = position
            revert()
        }

        Layout.fillWidth: true
        from: limits.minimum
        to: limits.maximum
        marked: !acceptable || !limits.ordered
        onEntered: position => modelText = position
        onConfirmed: limits.confirmed()
    }

    spacing: Look.rowSpacing
    Layout.fillWidth: true

    Heading {
        text: limits.fieldOfView
    }

    RowLayout {
        spacing: 12

        PlainLabel {
            id: nearLabel

            Accessible.ignored: true
            //: The nearest position of the focus
            text: qsTr("Nearest:")
        }

        PositionBox {
            id: nearBox

            name: limits.fieldOfView + " " + nearLabel.text.replace(":", "")
        }

        PlainLabel {
            id: farLabel

            Accessible.ignored: true
            //: The farthest position of the focus
            text: qsTr("Farthest:")
        }

        PositionBox {
            id: farBox

            name: limits.fieldOfView + " " + farLabel.text.replace(":", "")
        }
    }
}
