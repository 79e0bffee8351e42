import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Overlay Settings section: the texts and frames that the camera draws on its video output.
SectionBody {
    id: settings

    readonly property bool _canCustomize: camera ? camera.cameraCapabilitiesModel.hasOverlayCustomization : false
    readonly property bool _manufacturing: camera ? camera.manufacturingMode : false
    readonly property bool _custom: _canCustomize || _manufacturing
    readonly property bool _colorsAvailable: camera ? camera.overlaySettings.textColorsAvailable : false
    readonly property bool _overlayShown: camera ? camera.overlaySettings.showOverlay : false
    readonly property bool _usesColorPicker: connected && isShown
    // The button whose colour the open picker picks; null while it is closed.
    property ColorButton _opener

    function _openPicker(button: ColorButton) {
        _opener = button
        colorPicker.instance().openAt(button, button.colorIndex)
    }

    // The button still has the colour that the picker shows, unless the operator has picked another one.
    function _closePicker(index: int) {
        const button = _opener
        _opener = null
        if (camera)
            button.picked(index)
    }

    on_UsesColorPickerChanged: {
        if (!_usesColorPicker && _opener)
            colorPicker.instance().close()
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop

        RowLayout {
            visible: settings._custom
            spacing: 2 * Look.margin

            Toggle {
                //: Switch: whether the video output shows messages of the camera
                text: qsTr("Show Messages")
                checked: settings.camera ? settings.camera.overlaySettings.showMessages : false
                onToggled: settings.camera.overlaySettings.showMessages = checked
            }

            WrappingButton {
                //: Button: removes the camera's message from the video output
                text: qsTr("Clear Message")
                onClicked: settings.camera.overlaySettings.clearMessage()
            }
        }

        Toggle {
            //: Switch: whether the video output shows texts and frames
            text: qsTr("Show Overlay")
            checked: settings._overlayShown
            onToggled: settings.camera.overlaySettings.showOverlay = checked
        }

        RowGroup {
            visible: (settings._canCustomize && settings._colorsAvailable) || settings._manufacturing
            enabled: settings._overlayShown

            Heading {
                //: Heading of the colours of the texts on the video output
                text: qsTr("Text Colors")
            }

            ColorRow {
                //: Heading: the colour of the texts on the video output
                heading: qsTr("Foreground")
                hasColor: settings.camera ? settings.camera.overlaySettings.overlayTextHasColor : false
                colorIndex: settings.camera ? settings.camera.overlaySettings.overlayTextColorIndex : -1
                swatch: settings.camera ? settings.camera.overlaySettings.overlayTextColor : Look.fieldColor
                onChosen: hasColor => settings.camera.overlaySettings.overlayTextHasColor = hasColor
                onOpened: button => settings._openPicker(button)
                onPicked: index => settings.camera.overlaySettings.overlayTextColorIndex = index
            }

            ColorRow {
                //: Heading: the colour behind the texts on the video output
                heading: qsTr("Background")
                hasColor: settings.camera ? settings.camera.overlaySettings.overlayTextBackgroundHasColor : false
                colorIndex: settings.camera ? settings.camera.overlaySettings.overlayTextBackgroundColorIndex : -1
                swatch: settings.camera ? settings.camera.overlaySettings.overlayTextBackgroundColor : Look.fieldColor
                onChosen: hasColor => settings.camera.overlaySettings.overlayTextBackgroundHasColor = hasColor
                onOpened: button => settings._openPicker(button)
                onPicked: index => settings.camera.overlaySettings.overlayTextBackgroundColorIndex = index
            }
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop
        visible: settings._custom
        enabled: settings._overlayShown

        Heading {
            //: Heading of the switches of the texts and frames on the video output
            text: qsTr("Fields To Display")
        }

        RowLayout {
            spacing: 8

            WrappingButton {
                //: Button: switches all texts and frames of the video output on
                text: qsTr("Select All")
                onClicked: settings.camera.overlaySettings.setAllShowBoolsTo(true)
            }

            WrappingButton {
                //: Button: switches all texts and frames of the video output off
                text: qsTr("Select None")
                onClicked: settings.camera.overlaySettings.setAllShowBoolsTo(false)
            }

            WrappingButton {
                //: Button: lets the camera set its defaults for the texts and frames of the video output
                text: qsTr("Defaults")
                onClicked: settings.camera.overlaySettings.useDefaults()
            }
        }

        RowLayout {
            spacing: 4 * Look.margin

            FrameSwitch {
                //: Switch of a frame on the video output: the region of interest of the automatic gain control
                name: qsTr("AGC ROI")
                shown: settings.camera ? settings.camera.overlaySettings.showAgcRoi : false
                colorIndex: settings.camera ? settings.camera.overlaySettings.agcRoiColorIndex : 0
                swatch: settings.camera ? settings.camera.overlaySettings.agcRoiColor : Look.fieldColor
                onChosen: shown => settings.camera.overlaySettings.showAgcRoi = shown
                onOpened: button => settings._openPicker(button)
                onPicked: index => settings.camera.overlaySettings.agcRoiColorIndex = index
            }

            FrameSwitch {
                //: Switch of a frame on the video output: the region of interest of the automatic focus
                name: qsTr("Focus ROI")
                shown: settings.camera ? settings.camera.overlaySettings.showFocusRoi : false
                colorIndex: settings.camera ? settings.camera.overlaySettings.focusRoiColorIndex : 0
                swatch: settings.camera ? settings.camera.overlaySettings.focusRoiColor : Look.fieldColor
                onChosen: shown => settings.camera.overlaySettings.showFocusRoi = shown
                onOpened: button => settings._openPicker(button)
                onPicked: index => settings.camera.overlaySettings.focusRoiColorIndex = index
            }
        }

        UserTextRow {
            camera: settings.camera
        }

        OverlaySwitches {
            Layout.fillWidth: true
            Layout.preferredWidth: 536
            camera: settings.camera
        }
    }

    LazyLoader {
        id: colorPicker

        file: "qrc:/zvt/popups/VideoPaletteColorPicker.qml"
        initialProperties: ({
            colors: Qt.binding(() => settings.camera ? settings.camera.overlaySettings.videoPaletteStringList : [])
        })
    }

    Connections {
        target: colorPicker.item
        function onClosed() {
            settings._closePicker(colorPicker.instance().selectedIndex)
        }
    }

    // The open picker follows the camera.
    Connections {
        target: settings._opener
        function onColorIndexChanged() {
            colorPicker.instance().selectedIndex = settings._opener.colorIndex
        }
    }
}
