import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The source that the camera measures for a correction: its flag, with its temperatures, or an external blackbody.
RowGroup {
    id: rows

    required property ZvtCameraModel camera

    readonly property bool _twoPoint: camera ? camera.nucProcess.nucType === NucProcessModel.TYPE_TWO_POINT : false
    readonly property bool _internal: camera ? camera.nucProcess.nucSource === NucProcessModel.SOURCE_INTERNAL : false
    readonly property bool _fixed: camera ? camera.nucProcess.flagSetpointType === NucProcessModel.SETPOINT_FIXED : false
    readonly property bool _hasFlag: camera ? camera.nucProcess.hasFlag : false
    readonly property bool _controlled: camera ? camera.nucProcess.hasTempControlledFlag : false

    // Enter was pressed in a field.
    signal confirmed

    function _text(celsius: real): string {
        return camera ? camera.safeConvertFloatToLocaleString(celsius, 2) : ""
    }

    component TemperatureRow: NucNumberRow {
        fractional: true
        onConfirmed: rows.confirmed()
    }

    Heading {
        //: A group of choices: the flag or an external blackbody
        text: qsTr("Correction Source")
    }

    ColumnLayout {
        spacing: 0

        // Two points need two temperatures.
        Radio {
            Layout.fillWidth: true
            enabled: rows._twoPoint ? rows._controlled : rows._hasFlag
            checked: rows._internal
            //: A source that the camera measures
            text: qsTr("Internal Flag")
            onToggled: rows.camera.nucProcess.nucSource = NucProcessModel.SOURCE_INTERNAL
        }

        RowGroup {
            Layout.leftMargin: 24
            Layout.bottomMargin: Look.rowSpacing
            visible: rows._controlled
            enabled: rows._internal

            PlainLabel {
                opacity: enabled ? 1 : Look.disabledOpacity
                Accessible.ignored: true
                //: How the temperatures of the flag are given
                text: qsTr("Temperature Setpoints")
            }

            Choice {
                Layout.fillWidth: true
                //: How the temperatures of the flag are given
                Accessible.name: qsTr("Temperature Setpoints")
                //: The temperatures of the flag are given as differences from the ambient temperature
                model: [qsTr("Ambient + Delta"),
                        //: The temperatures of the flag are given in degrees
                        qsTr("Fixed")]
                currentIndex: rows.camera ? rows.camera.nucProcess.flagSetpointType : -1
                onActivated: index => rows.camera.nucProcess.flagSetpointType = index
            }

            TemperatureRow {
                visible: !rows._fixed
                //: A temperature of the flag above ambient: the lower of two
                heading: rows._twoPoint ? qsTr("Low Delta (°C)")
                                        //: The temperature of the flag above ambient
                                        : qsTr("Delta (°C)")
                modelText: rows._text(rows.camera ? rows.camera.nucProcess.flagSetpointDeltaLow : 0)
                onEntered: number => rows.camera.nucProcess.flagSetpointDeltaLow = number
            }

            TemperatureRow {
                visible: !rows._fixed && rows._twoPoint
                //: A temperature of the flag above ambient: the higher of two
                heading: qsTr("High Delta (°C)")
                modelText: rows._text(rows.camera ? rows.camera.nucProcess.flagSetpointDeltaHigh : 0)
                onEntered: number => rows.camera.nucProcess.flagSetpointDeltaHigh = number
            }

            TemperatureRow {
                visible: rows._fixed
                //: A temperature of the flag: the lower of two
                heading: rows._twoPoint ? qsTr("Low Temp (°C)")
                                        //: The temperature of the flag
                                        : qsTr("Temp (°C)")
                modelText: rows._text(rows.camera ? rows.camera.nucProcess.flagSetpointTempLow : 0)
                onEntered: number => rows.camera.nucProcess.flagSetpointTempLow = number
            }

            TemperatureRow {
                visible: rows._fixed && rows._twoPoint
                //: A temperature of the flag: the higher of two
                heading: qsTr("High Temp (°C)")
                modelText: rows._text(rows.camera ? rows.camera.nucProcess.flagSetpointTempHigh : 0)
                onEntered: number => rows.camera.nucProcess.flagSetpointTempHigh = number
            }
        }

        Radio {
            Layout.fillWidth: true
            checked: !rows._internal
            //: A source that the camera measures: the operator places it before the lens
            text: qsTr("External Blackbody")
            onToggled: rows.camera.nucProcess.nucSource = NucProcessModel.SOURCE_EXTERNAL
        }
    }
}
