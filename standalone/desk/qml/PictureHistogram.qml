import QtQuick
import zvt.controller.desk

// The histogram of the picture, with the limits of the gain control as two lines.
Item {
    id: histogram

    required property PictureModel picture

    height: graph.height + scale.height

    component Limit: Rectangle {
        required property double place
        required property Item area

        x: Math.round(place * (area.width - width))
        width: 2
        height: area.height
        color: DeskLook.accentColor
    }

    Rectangle {
        width: graph.width
        height: graph.height
        color: DeskLook.fieldColor
    }

    VideoView {
        id: graph

        width: histogram.width
        height: 64
        stretched: true
        smooth: false
        image: histogram.picture.histogram

        Accessible.role: Accessible.Graphic
        //: Accessible name
        Accessible.name: qsTr("Histogram")
    }

    Limit {
        place: histogram.picture.black
        area: graph
        visible: histogram.picture.hasFrame && place >= 0 && place <= 1
    }

    Limit {
        place: histogram.picture.white
        area: graph
        visible: histogram.picture.hasFrame && place >= 0 && place <= 1
    }

    Item {
        id: scale

        y: graph.height + 2
        width: histogram.width
        height: 18

        Text {
            text: histogram.picture.lowest
            color: DeskLook.dimTextColor
            font.pixelSize: DeskLook.hintSize
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: histogram.picture.hasFrame
            //: The counts between which the automatic gain control spreads the levels; %1 is such as "1000 to 3000"
            text: qsTr("AGC %1").arg(histogram.picture.gainLimits)
            color: DeskLook.accentColor
            font.pixelSize: DeskLook.hintSize
        }

        Text {
            anchors.right: parent.right
            text: histogram.picture.highest
            color: DeskLook.dimTextColor
            font.pixelSize: DeskLook.hintSize
        }
    }
}
