import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The temperatures of the camera's sensors, each with its trend of the last ten minutes.
Card {
    id: temperatures

    required property ZvtCameraModel camera
    required property bool connected

    // The smallest right edge of the captions, so that they line up with those of another card.
    property real captionEnd

    readonly property bool _hasChassis: camera ? camera.cameraCapabilitiesModel.hasChassisTemperature : false
    readonly property bool _hasInternal: camera ? camera.cameraCapabilitiesModel.hasInternalTemperature : false
    property int _polls

    component Sensor: Temperature {
        camera: temperatures.camera
        dense: temperatures.dense
    }

    component Caption: PlainLabel {
        Layout.alignment: Qt.AlignRight
        Layout.leftMargin: 8
        Layout.minimumWidth: temperatures.captionEnd - 8
        horizontalAlignment: Text.AlignRight
        color: Look.headerTextColor
    }

    onConnectedChanged: {
        if (!connected)
            return
        // The connected camera may be another one.
        for (const row of [fpa, frontPanel, airGap, lens, internal])
            row.clearTrend()
    }

    Connections {
        target: temperatures.camera ? temperatures.camera.statusTabModel : null
        // Every poll emits this signal, also if the value is the same; every fifth poll reads the temperatures.
        function onSaturatedChanged() {
            if (temperatures._polls++ % 5 !== 1)
                return
            const now = Date.now()
            for (const row of [fpa, frontPanel, airGap, lens, internal])
                row.addPoint(now)
        }
        function onFpaTempChanged() {
            fpa.read = true
        }
        function onFrontPanelTempChanged() {
            frontPanel.read = true
        }
        function onAirGapTempChanged() {
            airGap.read = true
        }
        function onLensTempChanged() {
            lens.read = true
        }
        function onInternalChassisTempChanged() {
            internal.read = true
        }
    }

    PlainLabel {
        Layout.columnSpan: 2
        Layout.fillWidth: true
        //: Status: heading of the rows for the camera's temperature sensors
        text: qsTr("Camera Temperatures:")
        color: Look.headerTextColor
        font.weight: Font.DemiBold
    }

    Caption {
        id: fpaCaption
        //: Temperature of the detector
        text: qsTr("FPA:")
    }
    Sensor {
        id: fpa

        readonly property bool celsius: temperatures.camera ? temperatures.camera.statusTabModel.fpaTempCelsius : false
        readonly property bool cold: temperatures.camera ? temperatures.camera.statusTabModel.fpaCold : false
        readonly property real kelvin: temperatures.camera ? temperatures.camera.statusTabModel.fpaTemp : 0

        heading: fpaCaption.text
        degrees: temperatures.camera && celsius ? temperatures.camera.statusTabModel.convertKelvinToCelsius(kelvin)
                                                : kelvin
        unit: celsius ? " °C" : " K"
        color: cold ? Look.coldColor : Look.warmColor
        trendColor: color

        GlyphLabel {
            id: fpaIcon

            objectName: "fpaGlyph"
            anchors.centerIn: parent
            Accessible.ignored: false
            //: Tool tip: the state of the detector
            Accessible.name: fpa.cold ? qsTr("At working temperature")
                                      //: Tool tip: the state of the detector
                                      : qsTr("Not at working temperature")
            visible: fpa.number !== ""
            text: fpa.cold ? Glyph.snowflake : Glyph.thermometer
            color: fpa.color

            HoverHandler {
                onHoveredChanged: Hint.show(fpaIcon, hovered, fpaIcon.Accessible.name)
            }
        }
    }

    Caption {
        id: frontPanelCaption
        visible: temperatures.camera ? temperatures.camera.cameraCapabilitiesModel.hasFrontPanelTemperature : false
        //: Temperature of the camera's front panel
        text: qsTr("Front Panel:")
    }
    Sensor {
        id: frontPanel
        visible: frontPanelCaption.visible
        heading: frontPanelCaption.text
        degrees: temperatures.camera ? temperatures.camera.statusTabModel.frontPanelTemp : 0
    }

    Caption {
        id: airGapCaption
        visible: temperatures.camera ? temperatures.camera.cameraCapabilitiesModel.hasAirGapTemperature : false
        //: Temperature of the air gap in front of the detector
        text: qsTr("Air Gap:")
    }
    Sensor {
        id: airGap
        visible: airGapCaption.visible
        heading: airGapCaption.text
        degrees: temperatures.camera ? temperatures.camera.statusTabModel.airGapTemp : 0
    }

    Caption {
        id: lensCaption
        visible: temperatures.camera ? temperatures.camera.statusTabModel.hasLensTemp : false
        //: Temperature of the lens
        text: qsTr("Lens:")
    }
    Sensor {
        id: lens
        visible: lensCaption.visible
        heading: lensCaption.text
        degrees: temperatures.camera ? temperatures.camera.statusTabModel.lensTemp : 0
    }

    Caption {
        id: internalCaption
        visible: temperatures._hasChassis || temperatures._hasInternal
        //: Temperature inside the camera
        text: temperatures._hasChassis ? qsTr("Chassis:")
                                       //: Temperature inside the camera
                                       : qsTr("Internal:")
    }
    Sensor {
        id: internal
        visible: internalCaption.visible
        heading: internalCaption.text
        degrees: temperatures.camera ? temperatures.camera.statusTabModel.internalChassisTemp : 0
    }
}
