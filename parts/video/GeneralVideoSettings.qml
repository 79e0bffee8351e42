import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// The body of the General Video Settings section. While its model is read, the controls are disabled, except for the
// one that the operator is using.
SectionBody {
    id: settings

    readonly property VideoTabModel video: camera ? camera.videoTabModel : null
    readonly property bool _busy: video ? video.refreshing : false
    readonly property bool _hasRefreshed: video ? video.hasRefreshed : false
    readonly property bool _hasUpdateRate: camera ? camera.cameraCapabilitiesModel.hasUpdateRate : false
    readonly property bool _isSD: video ? video.isSD : false
    // The number of reads. The bindings of controls depend on it, because a choice that the camera has refused changes
    // no value of the model: the control shows the model's value again after the next read.
    property int _reads

    // A row with a slider and a button that sets the value to 0.
    component LevelRow: SettingRow {
        id: levelRow

        property alias from: slider.from
        property alias to: slider.to
        property alias modelValue: slider.modelValue
        required property string resetName

        signal moveTo(level: int)
        signal reset

        visible: settings._isSD
        enabled: !settings._busy

        ValueSlider {
            id: slider

            Accessible.name: levelRow.name
            Layout.fillWidth: true
            Layout.maximumWidth: 300
            modelValue: 0
            reads: settings._reads
            onMoveTo: level => levelRow.moveTo(level)
        }

        WrappingButton {
            Layout.preferredWidth: 72
            Accessible.name: levelRow.resetName
            //: Button: sets a value of the picture to 0
            text: qsTr("Reset")
            onClicked: levelRow.reset()
        }
    }

    on_HasRefreshedChanged: {
        if (_hasRefreshed)
            _reads += 1
    }
    Component.onCompleted: _reads = _hasRefreshed ? 1 : 0

    RowGroup {
        Layout.alignment: Qt.AlignTop

        ChoiceRow {
            enabled: !settings._busy || listOpen
            //: Format of the video outputs
            heading: qsTr("Format:")
            model: settings.video ? settings.video.formatStrings : []
            // Depends on `model`, since a new list selects its first row.
            currentIndex: model && settings.video && settings._reads > 0 ? settings.video.formatIndex : -1
            onActivated: index => settings.video.formatIndex = index
        }

        SettingRow {
            id: rateRow

            visible: settings._hasUpdateRate
            //: How often the picture of interlaced video is renewed
            heading: qsTr("Update Rate:")

            Choice {
                Layout.preferredWidth: 300
                Accessible.name: rateRow.name
                enabled: !settings._busy || listOpen
                //: Update rate of the picture
                model: [qsTr("Frame - Recommended For General Use"),
                        //: Update rate of the picture: each half of a frame is new
                        qsTr("Field - Best for Tracking Moving Objects")]
                currentIndex: settings.video && settings._reads > 0 ? settings.video.selectedUpdateRateIndex : -1
                onActivated: index => settings.video.selectedUpdateRateIndex = index
            }
        }

        FilterRows {
            camera: settings.camera
            busy: settings._busy
            reads: settings._reads
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop

        AgcRows {
            video: settings.video
            busy: settings._busy
            reads: settings._reads
        }

        Heading {
            //: Heading of a group of settings: palette, brightness and contrast
            text: qsTr("Picture")
        }

        ChoiceRow {
            enabled: !settings._busy || listOpen
            //: The colours of the picture
            heading: qsTr("Palette:")
            model: settings.video ? settings.video.palettes : []
            // Depends on `model`, since a new list selects its first row.
            currentIndex: model && settings.video && settings._reads > 0 ? settings.video.paletteIndex : -1
            onActivated: index => settings.video.paletteIndex = index
        }

        LevelRow {
            //: Of the picture
            heading: qsTr("Brightness:")
            //: Accessible name of a button
            resetName: qsTr("Reset Brightness")
            from: -15
            to: 63
            modelValue: settings.video ? settings.video.brightness : 0
            onMoveTo: brightness => settings.video.brightness = brightness
            onReset: settings.video.resetBrightness()
        }

        LevelRow {
            //: Of the picture
            heading: qsTr("Contrast:")
            //: Accessible name of a button
            resetName: qsTr("Reset Contrast")
            from: -128
            to: 127
            modelValue: settings.video ? settings.video.contrast : 0
            onMoveTo: contrast => settings.video.contrast = contrast
            onReset: settings.video.resetContrast()
        }
    }
}
