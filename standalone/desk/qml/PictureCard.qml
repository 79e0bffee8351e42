import QtQuick
import zvt.controller.desk

// What the camera sees now, with its statistics.
Card {
    id: card

    required property PictureModel model

    name: "picture"
    title: qsTr("Picture")
    opensFirst: true

    body: Column {
        id: content

        readonly property bool _narrow: width < 350
        readonly property int _valueWidth: _narrow ? width : (width - DeskLook.spacing) / 2

        width: parent ? parent.width : 0
        spacing: DeskLook.spacing

        Component.onDestruction: card.model.shown = false

        Rectangle {
            width: content.width
            height: Math.round(width * 0.8)
            color: "#000000"
            border.color: DeskLook.frameColor

            VideoView {
                id: view

                anchors.fill: parent
                anchors.margins: 1
                image: card.model.image
                // The place of the image may be another one.
                onImageChanged: hover.showPixel()

                Accessible.role: Accessible.Graphic
                //: Accessible name
                Accessible.name: qsTr("Live picture")

                HoverHandler {
                    id: hover

                    function showPixel() {
                        if (hovered)
                            card.model.pointAt(view.onImage(point.position))
                    }

                    onPointChanged: showPixel()
                    onHoveredChanged: if (!hovered) card.model.pointAway()
                }

                Binding {
                    target: card.model
                    property: "shown"
                    value: view.live && card.isInView
                }
            }

            Text {
                anchors.centerIn: parent
                width: parent.width - 2 * DeskLook.margin
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                visible: text !== ""
                text: card.model.message
                color: DeskLook.dimTextColor
                font.pixelSize: DeskLook.textSize

                Accessible.role: Accessible.StaticText
                //: Accessible name
                Accessible.name: qsTr("Picture message")
            }
        }

        CardCombo {
            label: qsTr("View")
            //: Views of the picture: frames as they are read out, corrected frames, the picture of the video output
            choices: [qsTr("Raw"), qsTr("Corrected"), qsTr("Video output")]
            index: card.model.view
            onChosen: index => card.model.view = index
        }

        CardCombo {
            //: The preset whose frames are shown
            label: qsTr("Preset")
            visible: card.model.presets.length > 1
            enabled: card.model.view !== PictureModel.Video
            choices: card.model.presets
            index: card.model.presetIndex
            onChosen: index => card.model.presetIndex = index
        }

        Grid {
            columns: content._narrow ? 1 : 2
            columnSpacing: DeskLook.spacing

            PictureValue {
                width: content._valueWidth
                label: qsTr("Frame")
                text: card.model.frame
            }
            PictureValue {
                width: content._valueWidth
                //: The mean of all pixels, in counts
                label: qsTr("Mean")
                text: card.model.mean
            }
            PictureValue {
                width: content._valueWidth
                //: The number of the preset of the frame
                label: qsTr("Frame preset")
                text: card.model.preset
            }
            PictureValue {
                width: content._valueWidth
                //: The standard deviation over the frame, in counts
                label: qsTr("Spatial noise")
                text: card.model.spatialNoise
            }
            PictureValue {
                width: content._valueWidth
                //: Frames per second
                label: qsTr("Frame rate")
                text: card.model.rate
            }
            PictureValue {
                width: content._valueWidth
                //: The standard deviation from frame to frame, in counts
                label: qsTr("Temporal noise")
                text: card.model.temporalNoise
            }
        }

        PictureHistogram {
            width: content.width
            picture: card.model
        }

        PictureValue {
            width: content.width
            //: The pixel under the mouse
            label: qsTr("Under the pointer")
            text: card.model.pixel
        }

        Flow {
            width: content.width
            spacing: DeskLook.spacing
            enabled: !card.model.saver.saving

            CardButton {
                text: qsTr("Save frame...")
                enabled: card.model.hasFrame
                onClicked: card.model.saveFrame()
            }
            CardButton {
                text: qsTr("Save view...")
                enabled: card.model.hasFrame
                onClicked: card.model.savePicture()
            }
            CardButton {
                text: qsTr("Save statistics...")
                enabled: card.model.hasStatistics
                onClicked: card.model.saveStatistics()
            }
        }

        CardNote {
            visible: text !== ""
            text: card.model.saver.result
            isError: card.model.saver.failed

            Accessible.role: Accessible.StaticText
            //: Accessible name
            Accessible.name: qsTr("Result of saving")
        }
    }
}
