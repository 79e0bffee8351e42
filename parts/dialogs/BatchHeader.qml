import QtQuick
import zvt.look

// The headings of the columns in the list of a batch.
Rectangle {
    id: header

    required property BatchColumns columns

    component ColumnHeading: PlainLabel {
        height: header.height
        color: Look.headerTextColor
        font.weight: Font.DemiBold
        verticalAlignment: Text.AlignVCenter
    }

    implicitHeight: Look.rowHeight
    color: Look.panelColor

    ColumnHeading {
        width: header.columns.numberWidth
        //: Heading of a column: the number of a row
        text: qsTr("#")
        horizontalAlignment: Text.AlignRight
    }

    ColumnHeading {
        x: header.columns.movieX
        //: Heading of a column: the movies in the camera
        text: qsTr("Input")
    }

    ColumnHeading {
        x: header.columns.outputX
        //: Heading of a column: the names of the files to be written
        text: qsTr("Output")
    }

    ColumnHeading {
        x: header.columns.rangeX
        // The boxes below the names say what they are.
        visible: !header.columns.hasTwoLines
        //: Heading of a column: which part of a movie is downloaded
        text: qsTr("Range")
    }
}
