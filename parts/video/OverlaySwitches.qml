pragma ComponentBehavior: Bound

import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The switches of the texts of the overlay, in columns that fill the width.
Flow {
    id: switches

    required property ZvtCameraModel camera

    // The columns are wide enough for the longest text.
    readonly property int _columns: Math.max(1, Math.floor((width + spacing) / 264))
    readonly property real _cellWidth: (width - (_columns - 1) * spacing) / _columns
    // The text and the property of each switch, and the property that is true if the camera has a value for it.
    readonly property var _table: [
        //: A text of the video overlay: the maker's logo
        { text: qsTr("Logo"), shown: "showLogo" },
        //: A text of the video overlay
        { text: qsTr("Focus"), shown: "showFocus" },
        //: A text of the video overlay
        { text: qsTr("Date"), shown: "showDate" },
        //: A text of the video overlay
        { text: qsTr("Camera Info"), shown: "showCameraInfo" },
        //: A text of the video overlay
        { text: qsTr("Time"), shown: "showTime" },
        //: A text of the video overlay: the time of a time code signal
        { text: qsTr("IRIG"), shown: "showIrig" },
        //: A text of the video overlay: the hours of operation
        { text: qsTr("Hour Meter"), shown: "showHourMeter" },
        //: A text of the video overlay
        { text: qsTr("Front Panel Temp"), shown: "showFrontPanelTemp", needs: "hasFrontPanelTemperature" },
        //: A text of the video overlay
        { text: qsTr("Lens Temp"), shown: "showLensTemp", needs: "hasLensTemp" },
        //: A text of the video overlay
        { text: qsTr("Air Gap Temp"), shown: "showAirGapTemp", needs: "hasAirGapTemperature" },
        //: A text of the video overlay: the palette of the picture
        { text: qsTr("Palette"), shown: "showPalette" },
        //: A text of the video overlay
        { text: qsTr("Internal Temp"), shown: "showInternalTemp", needs: "hasInternalTemperature" },
        //: A text of the video overlay
        { text: qsTr("Chassis Temp"), shown: "showChassisTemp", needs: "hasChassisTemperature" },
        //: A text of the video overlay: the field of view
        { text: qsTr("FOV"), shown: "showFov" },
        //: A text of the video overlay: the name of the state that the camera has loaded
        { text: qsTr("State Name"), shown: "showStateName" },
        //: A text of the video overlay
        { text: qsTr("Zoom"), shown: "showZoom" },
        //: A text of the video overlay: the trigger mode, the preset and its integration time
        { text: qsTr("Status/Preset : Integration Time"), shown: "showStatusPresetIntTime" },
        //: A text of the video overlay
        { text: qsTr("Frame Rate"), shown: "showFrameRate" },
        //: A text of the video overlay: the state of the flag, the internal shutter
        { text: qsTr("Flag"), shown: "showFlag", needs: "hasFlag" }
    ]

    function _has(needed: string): bool {
        if (!camera)
            return false
        return needed === "hasLensTemp" ? camera.overlaySettings.hasLensTemp : camera.cameraCapabilitiesModel[needed]
    }

    spacing: Look.rowSpacing

    Repeater {
        model: switches._table

        Toggle {
            required property var modelData

            width: switches._cellWidth
            visible: !modelData.needs || switches._has(modelData.needs)
            text: modelData.text
            checked: switches.camera ? switches.camera.overlaySettings[modelData.shown] : false
            onToggled: switches.camera.overlaySettings[modelData.shown] = checked
        }
    }
}
