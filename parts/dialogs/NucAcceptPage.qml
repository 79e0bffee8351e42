import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The last page of the correction wizard: what the camera found, for the operator to accept or to discard it.
DialogScroller {
    id: page

    required property ZvtCameraModel camera

    readonly property bool _foundBadPixels: camera ? camera.nucProcess.nucType === NucProcessModel.TYPE_TWO_POINT
                                                     && camera.nucProcess.detectBadPixels : false

    function _pair(low: int, high: int): string {
        return low + " / " + high
    }

    component CountRow: FactRow {
        headingWidth: 200
    }

    RowGroup {
        visible: page._foundBadPixels

        Heading {
            //: A group of numbers
            text: qsTr("Bad Pixels")
        }

        CountRow {
            //: A number of pixels, as are the following
            heading: qsTr("Total Bad Pixels")
            value: page.camera ? page.camera.nucProcess.totalBadPixels : ""
        }

        CountRow {
            //: Bad pixels of the factory's list
            heading: qsTr("Factory")
            value: page.camera ? page.camera.nucProcess.factoryBadPixels : ""
        }

        CountRow {
            //: Bad pixels that are not in the factory's list
            heading: qsTr("New")
            value: page.camera ? page.camera.nucProcess.newBadPixels : ""
        }

        CountRow {
            //: Pixels with a changing signal
            heading: qsTr("Twinkler")
            value: page.camera ? page.camera.nucProcess.twinklingPixels : ""
        }

        CountRow {
            //: Two numbers of pixels: with a too low and with a too high responsivity
            heading: qsTr("Responsivity Low/High")
            value: page.camera ? page._pair(page.camera.nucProcess.belowGainMin, page.camera.nucProcess.aboveGainMax) : ""
        }

        CountRow {
            //: Two numbers of pixels: with a too low and with a too high signal at the first source
            heading: qsTr("Src1 A/D Count Low/High")
            value: page.camera ? page._pair(page.camera.nucProcess.belowADMinSrc1, page.camera.nucProcess.aboveADMaxSrc1)
                               : ""
        }

        CountRow {
            //: Two numbers of pixels: with a too low and with a too high signal at the second source
            heading: qsTr("Src2 A/D Count Low/High")
            value: page.camera ? page._pair(page.camera.nucProcess.belowADMinSrc2, page.camera.nucProcess.aboveADMaxSrc2)
                               : ""
        }
    }

    PlainLabel {
        Layout.topMargin: 8
        Layout.fillWidth: true
        //: A question
        text: qsTr("Accept this correction?")
        font.weight: Font.DemiBold
        color: Look.strongTextColor
        wrapMode: Text.Wrap
    }

    Toggle {
        checked: page.camera ? page.camera.correctionTabModel.showBadPixels : false
        //: A switch: bad pixels are white in the image instead of replaced
        text: qsTr("Show Bad Pixels")
        onToggled: page.camera.correctionTabModel.showBadPixels = checked
    }
}
