import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "controls"

// What the camera is doing now.
ScrollView {
    id: page

    required property var tabModel
    required property bool selected

    // Puts rows of one line of text as far apart as rows of controls are high.
    readonly property int rowSpacing: root.rowSpacing + 4
    readonly property bool active: selected && (tabModel?.visible ?? false) && root.safeGetConnected()
    readonly property var _capabilities: root.capabilitiesModelExists() ? cameraModel.cameraCapabilitiesModel : null
    readonly property bool _hasChassis: _capabilities?.hasChassisTemperature ?? false
    readonly property bool _hasInternal: _capabilities?.hasInternalTemperature ?? false

    function _joined(parts: var, separator: string): string {
        return parts.filter(part => part !== "").join(separator)
    }

    // The model can die before the page does.
    function _localeText(number: double): string {
        return cameraModel?.safeConvertFloatToLocaleString(number, 2) ?? ""
    }

    component Heading: Label {
        Layout.alignment: Qt.AlignRight | Qt.AlignTop
        color: root.textColor
    }

    component Fact: Label {
        required property string heading

        Layout.fillWidth: true
        Accessible.name: heading.replace(":", "")
        Accessible.description: text
        color: root.strongTextColor
        wrapMode: Text.Wrap
    }

    // The number and its unit, each in a place of its own.
    component Temperature: RowLayout {
        id: temperature

        required property string heading
        required property double degrees
        property string unit: " °C"
        property color color: root.strongTextColor

        // The model's values start at zero. One that has left it has been read; before that there is nothing to show.
        property bool _read

        readonly property string number: _read ? page._localeText(degrees) : ""
        readonly property string text: number === "" ? "" : number + unit

        function _note() {
            _read = _read || degrees !== 0
        }

        spacing: 0
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: heading.replace(":", "")
        Accessible.description: text
        onDegreesChanged: _note()
        Component.onCompleted: _note()

        TextMetrics {
            id: longest

            font: numberLabel.font
            text: "-0000.00"
        }

        Label {
            id: numberLabel

            Layout.preferredWidth: Math.ceil(Math.max(longest.advanceWidth, implicitWidth))
            Layout.maximumWidth: Layout.preferredWidth
            Layout.fillWidth: true
            Accessible.ignored: true
            text: temperature.number
            color: temperature.color
            horizontalAlignment: Text.AlignRight
            wrapMode: Text.WrapAnywhere
        }

        Label {
            Layout.minimumWidth: implicitWidth
            Layout.fillWidth: true
            Accessible.ignored: true
            text: temperature.number === "" ? "" : temperature.unit
            color: temperature.color
        }
    }

    contentWidth: availableWidth
    padding: 12
    ScrollBar.vertical.policy: contentHeight > availableHeight ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    onActiveChanged: {
        if (active)
            tabModel.refresh()
    }

    Binding {
        target: page.tabModel
        property: "visible"
        value: page.visible && (page.parent?.visible ?? false)
    }

    GridLayout {
        width: page.availableWidth
        columns: 2
        columnSpacing: 12
        rowSpacing: page.rowSpacing

        NoCameraConnectedRectangle {
            visible: !root.safeGetConnected()
            Layout.columnSpan: 2
            Layout.fillWidth: true
        }

        Heading {
            id: modelSerial
            //: Status: the camera's model and serial number
            text: qsTr("Model/Serial:")
        }
        Fact {
            heading: modelSerial.text
            text: page._joined([cameraModel?.model ?? "", cameraModel?.serial ?? ""], "/")
        }

        Heading {
            id: integrationTime
            //: Status: for how long the detector collects light
            text: qsTr("Integration Time:")
        }
        Fact {
            heading: integrationTime.text
            text: page.tabModel?.integrationTime ?? ""
        }

        Heading {
            id: frameSize
            //: Status: width and height of the image
            text: qsTr("Frame Size:")
        }
        Fact {
            heading: frameSize.text
            text: page.tabModel?.frameSize ?? ""
        }

        Heading {
            id: frameRate
            //: Status: images per second
            text: qsTr("Frame Rate:")
        }
        Fact {
            heading: frameRate.text
            text: page.tabModel?.frameRate ?? ""
        }

        Heading {
            id: time
            //: Status: the camera's clock
            text: qsTr("Time:")
        }
        Fact {
            heading: time.text
            text: page.tabModel?.time ?? ""
        }

        Heading {
            id: operatingTime
            //: Status: for how long the camera has run in all
            text: qsTr("Operating Time:")
        }
        Fact {
            heading: operatingTime.text
            text: page.tabModel?.operatingTime ?? ""
        }

        Heading {
            id: type
            //: Status: the camera's kind
            text: qsTr("Type:")
        }
        Fact {
            heading: type.text
            text: page._joined([cameraModel?.readoutName ?? "", cameraModel?.detectorTypeName ?? "",
                                cameraModel?.cameraSubtypeName ?? ""], ", ")
        }

        Heading {
            id: saturation
            //: Status: whether pixels are at their limit
            text: qsTr("Saturation:")
        }
        RowLayout {
            id: saturationRow

            readonly property bool unknown: !root.safeGetConnected()
            readonly property bool bad: page.tabModel?.saturated ?? false

            spacing: 8

            Label {
                objectName: "saturationGlyph"
                Layout.preferredWidth: 16
                Layout.alignment: Qt.AlignTop
                Accessible.ignored: true
                horizontalAlignment: Text.AlignHCenter
                text: saturationRow.unknown ? "\uf059" : saturationRow.bad ? "\uf00d" : "\uf00c"
                font.family: fontAwesome.name
                font.pixelSize: 15
                color: saturationRow.unknown ? root.kestrinSecondaryCoolGray
                                             : saturationRow.bad ? root.tidepoolAccentRed : root.tidepoolAccentGreen
            }

            Fact {
                heading: saturation.text
                //: Saturation
                text: saturationRow.unknown ? qsTr("Unknown")
                                            //: Saturation
                                            : saturationRow.bad ? qsTr("Bad. Above at least one threshold.")
                                                                //: Saturation
                                                                : qsTr("Good. Under all thresholds.")
            }
        }

        Heading {
            //: Status: heads the rows of the camera's sensors
            text: qsTr("Camera Temperatures:")
        }
        GridLayout {
            Layout.fillWidth: true
            columns: 2
            columnSpacing: 12
            rowSpacing: page.rowSpacing

            Heading {
                id: fpa
                //: Temperature of the detector
                text: qsTr("FPA:")
            }
            Temperature {
                readonly property bool celsius: page.tabModel?.fpaTempCelsius ?? false
                readonly property double kelvin: page.tabModel?.fpaTemp ?? 0

                heading: fpa.text
                degrees: celsius ? page.tabModel?.convertKelvinToCelsius(kelvin) ?? 0 : kelvin
                unit: celsius ? " °C" : " K"
                color: (page.tabModel?.fpaCold ?? false) ? "#8080FF" : "#FF8080"
            }

            Heading {
                id: frontPanel
                visible: page._capabilities?.hasFrontPanelTemperature ?? false
                //: Temperature of the camera's front panel
                text: qsTr("Front Panel:")
            }
            Temperature {
                visible: frontPanel.visible
                heading: frontPanel.text
                degrees: page.tabModel?.frontPanelTemp ?? 0
            }

            Heading {
                id: airGap
                visible: page._capabilities?.hasAirGapTemperature ?? false
                //: Temperature of the gap before the detector
                text: qsTr("Air Gap:")
            }
            Temperature {
                visible: airGap.visible
                heading: airGap.text
                degrees: page.tabModel?.airGapTemp ?? 0
            }

            Heading {
                id: lens
                visible: page.tabModel?.hasLensTemp ?? false
                //: Temperature of the lens
                text: qsTr("Lens:")
            }
            Temperature {
                visible: lens.visible
                heading: lens.text
                degrees: page.tabModel?.lensTemp ?? 0
            }

            Heading {
                id: inside
                visible: page._hasChassis || page._hasInternal
                //: Temperature inside the camera
                text: page._hasChassis ? qsTr("Chassis:")
                                       //: Temperature inside the camera
                                       : qsTr("Internal:")
            }
            Temperature {
                visible: inside.visible
                heading: inside.text
                degrees: page.tabModel?.internalChassisTemp ?? 0
            }
        }
    }
}
