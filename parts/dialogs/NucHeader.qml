import QtQuick
import QtQuick.Layouts
import zvt.look

// The headings of the columns in the list of corrections. The widths of the columns are those of NucRow.
Rectangle {
    id: header

    component ColumnHeading: PlainLabel {
        color: Look.headerTextColor
        font.weight: Font.DemiBold
    }

    implicitHeight: Look.rowHeight
    color: Look.panelColor

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 10 + Look.rowHeight + 12
        anchors.rightMargin: 18
        spacing: 12

        ColumnHeading {
            Layout.fillWidth: true
            //: Heading of a column, as are the following
            text: qsTr("Name")
        }

        ColumnHeading {
            Layout.preferredWidth: 72
            //: The size of an image window, in pixels
            text: qsTr("Window")
        }

        ColumnHeading {
            Layout.preferredWidth: 96
            //: An integration time
            text: qsTr("Int Time")
            horizontalAlignment: Text.AlignRight
        }

        ColumnHeading {
            Layout.preferredWidth: 120
            //: When a correction was made
            text: qsTr("Date")
        }
    }
}
