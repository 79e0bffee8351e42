import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// Chooses a factory calibration, or sets an integration time in milliseconds.
FrameRateComboBox {
    id: box

    required property int number
    required property ZvtCameraModel camera
    required property ZvtCameraPresetModel preset
    required property bool connected

    readonly property SetupGeneralModel _general: camera ? camera.setupGeneralModel : null
    readonly property real _milliseconds: preset ? preset.integrationTime : 0

    // Whether an integration time of this camera has been read or entered, so that the next change is marked as an
    // update.
    property bool _timeRead

    //: Accessible name; %1 is the number of a preset
    Accessible.name: qsTr("Integration Time %1").arg(number)
    //: Tool tip
    toolTip: qsTr("Calibration Setting or Integration Time in Milliseconds")
    model: _general ? _general.factoryCalibrationStrings : []
    currentIndex: preset ? preset.activeFactoryCalibrationIndex : -1
    editText: _milliseconds === 0 || !camera ? "" : camera.safeConvertFloatToLocaleString(_milliseconds, 6)
    onConnectedChanged: _timeRead = false
    Component.onCompleted: _timeRead = _milliseconds !== 0
    onActivated: index => preset.activeFactoryCalibrationIndex = index
    onAccepted: {
        const milliseconds = Numbers.parse(currentText, -1)
        if (isNaN(milliseconds)) {
            refuse()
            return
        }
        expectAnswer()
        _timeRead = true
        preset.integrationTime = milliseconds
    }

    Connections {
        target: box.preset
        function onIntegrationTimeChanged() {
            if (box._timeRead)
                box.showFadingIntWidthUpdatedIndicator()
            box._timeRead = true
        }
    }
}
