import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// The settings of one preset: whether it is in use, its integration time and its frame rate. In superframing only the
// first row shows a rate, that of the whole superframe.
SettingRow {
    id: row

    required property int number
    required property ZvtCameraModel camera
    required property bool connected
    required property bool superframing
    required property bool presetSequencing
    required property bool narrow

    readonly property SetupGeneralModel general: camera ? camera.setupGeneralModel : null
    readonly property ZvtCameraPresetModel preset: general ? general.ps(number) : null
    // An integration time of 0 has not been read: no camera has this value.
    readonly property bool wasRead: preset ? preset.integrationTime !== 0 : false
    readonly property bool calibrated: preset ? preset.factoryCalibrationLoaded : false

    // The label is empty, so narrow rows use its width.
    labelWidth: narrow ? 84 : Look.labelWidth
    visible: number === 0 || (general ? general.numPresets > 1 : false)

    SetupTabPresetNumberButton {
        presetNumber: row.number
        setupGeneralModel: row.general && row.general.hasRefreshed ? row.general : null
        //: Accessible name; %1 is a number
        Accessible.name: qsTr("Preset %1").arg(row.number)
    }

    NumberBox {
        visible: row.presetSequencing
        Layout.preferredWidth: 104
        //: Accessible name; %1 is the number of a preset
        name: qsTr("Dwell Count %1").arg(row.number)
        //: Tool tip: how often the sequence repeats a preset
        toolTip: qsTr("Dwell Count")
        to: 2147483647
        modelText: row.wasRead && row.preset ? row.preset.dwellCount : ""
        onEntered: count => row.preset.dwellCount = count
    }

    Unit {
        visible: row.presetSequencing
        //: Multiplication sign between a count and the repeated preset
        text: qsTr("x")
    }

    IntegrationTimeBox {
        Layout.preferredWidth: row.narrow ? 132 : 180
        number: row.number
        camera: row.camera
        preset: row.preset
        connected: row.connected
        editable: !row.calibrated
    }

    Unit {
        Layout.preferredWidth: 18
        //: Milliseconds
        text: row.calibrated ? "" : qsTr("ms")
    }

    RateControls {
        readonly property bool ofSuperframe: row.superframing

        visible: !ofSuperframe || row.number === 0
        camera: row.camera
        boxWidth: row.narrow ? 92 : 112
        //: Accessible name: the rate of the whole superframe
        name: ofSuperframe ? qsTr("Superframe Rate")
                           //: Accessible name; %1 is the number of a preset
                           : qsTr("Frame Rate %1").arg(row.number)
        //: Tool tip
        toolTip: ofSuperframe ? qsTr("Superframe Rate in hertz")
                              //: Tool tip
                              : qsTr("Frame Rate in hertz")
        showMaxOnFirstIndexText: !ofSuperframe
        rates: ofSuperframe ? (row.general ? row.general.superframeRates : []) : row.preset ? row.preset.frameRates : []
        rateIndex: ofSuperframe ? (row.general ? row.general.superframeRateIndex : -1) : row.preset ? row.preset.frameRateIndex : -1
        rate: ofSuperframe ? (row.general ? row.general.superframeRate : 0) : row.preset ? row.preset.frameRate : 0
        onIndexChosen: index => {
            if (ofSuperframe)
                row.general.superframeRateIndex = index
            else
                row.preset.frameRateIndex = index
        }
        onRateTyped: rate => {
            // The camera may refuse the rate, or change it with the integration time.
            if (ofSuperframe) {
                row.general.superframeRate = rate
                row.general.refresh()
            } else {
                row.preset.frameRate = rate
                row.preset.refresh()
            }
        }
    }
}
