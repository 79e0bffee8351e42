import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// The page of the correction wizard with the limits by which bad pixels are found.
DialogScroller {
    id: page

    required property ZvtCameraModel camera

    // Enter was pressed in a field.
    signal confirmed

    function _text(number: real): string {
        return camera ? camera.safeConvertFloatToLocaleString(number, 2) : ""
    }

    component LimitRow: NucNumberRow {
        labelWidth: 232
        onConfirmed: page.confirmed()
    }

    Heading {
        //: A group of limits
        text: qsTr("Bad Pixel Detection Settings")
    }

    LimitRow {
        //: The lowest signal of a good pixel
        heading: qsTr("A/D Count Limit Low")
        modelText: page.camera ? page.camera.nucProcess.adcLow : ""
        onEntered: number => page.camera.nucProcess.adcLow = number
    }

    LimitRow {
        //: The highest signal of a good pixel
        heading: qsTr("A/D Count Limit High")
        modelText: page.camera ? page.camera.nucProcess.adcHigh : ""
        onEntered: number => page.camera.nucProcess.adcHigh = number
    }

    LimitRow {
        //: The lowest responsivity of a good pixel, as a factor
        heading: qsTr("Responsivity Limit Low")
        fractional: true
        modelText: page._text(page.camera ? page.camera.nucProcess.gainMin : 0)
        onEntered: number => page.camera.nucProcess.gainMin = number
    }

    LimitRow {
        //: The highest responsivity of a good pixel, as a factor
        heading: qsTr("Responsivity Limit High")
        fractional: true
        modelText: page._text(page.camera ? page.camera.nucProcess.gainMax : 0)
        onEntered: number => page.camera.nucProcess.gainMax = number
    }

    WrappingCheckBox {
        Layout.leftMargin: 232 + 12
        Layout.fillWidth: true
        checked: page.camera ? page.camera.nucProcess.detectTwinklers : false
        //: Whether pixels with a changing signal are looked for
        text: qsTr("Twinkling Pixel Detection")
        onToggled: page.camera.nucProcess.detectTwinklers = checked
    }

    LimitRow {
        //: In how many frames pixels with a changing signal are looked for
        heading: qsTr("Twinkler num frames to collect")
        modelText: page.camera ? page.camera.nucProcess.twinklerNumFrames : ""
        onEntered: number => page.camera.nucProcess.twinklerNumFrames = number
    }

    LimitRow {
        //: The greatest change of the signal of a good pixel
        heading: qsTr("Twinkler max pixel value delta")
        modelText: page.camera ? page.camera.nucProcess.twinklerDelta : ""
        onEntered: number => page.camera.nucProcess.twinklerDelta = number
    }
}
