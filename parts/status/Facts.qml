import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The identity of the camera, its image settings, its clocks and its saturation.
Card {
    id: facts

    required property ZvtCameraModel camera
    required property bool connected

    // The right edge of the captions.
    readonly property real captionEnd: modelSerial.x + modelSerial.width

    readonly property bool _saturated: camera ? camera.statusTabModel.saturated : false
    // Whether the saturation has been read since the camera connected.
    property bool _saturationRead

    function _joined(parts: var, separator: string): string {
        return parts.filter(part => part !== "").join(separator)
    }

    component Caption: PlainLabel {
        Layout.alignment: Qt.AlignRight | Qt.AlignTop
        color: Look.headerTextColor
    }

    // A value that can be selected and copied.
    component Fact: TextInput {
        required property string heading
        property string value

        // It gets the focus only by mouse, and the page must not scroll then.
        readonly property int focusReason: Qt.MouseFocusReason

        Layout.fillWidth: true
        opacity: enabled ? 1 : Look.disabledOpacity
        Accessible.role: Accessible.StaticText
        Accessible.name: heading.replace(":", "")
        Accessible.description: text
        readOnly: true
        selectByMouse: true
        wrapMode: TextInput.Wrap
        font.pixelSize: Look.textSize
        color: Look.strongTextColor
        selectionColor: Look.kestrinAccentBlue
        selectedTextColor: Look.inverseTextColor
        // A new value, such as that of the clock, keeps the selection.
        onValueChanged: {
            const start = selectionStart
            const end = selectionEnd
            text = value
            if (start !== end)
                select(start, end)
        }
    }

    onConnectedChanged: _saturationRead = false

    // Every poll emits this signal, also if the value is the same.
    Connections {
        target: facts.camera ? facts.camera.statusTabModel : null
        function onSaturatedChanged() {
            facts._saturationRead = true
        }
    }

    Caption {
        id: modelSerial
        //: Status: the camera's model and serial number
        text: qsTr("Model/Serial:")
    }
    Fact {
        heading: modelSerial.text
        value: facts.camera ? facts._joined([facts.camera.model, facts.camera.serial], "/") : ""
    }

    Caption {
        id: integrationTime
        //: Status: how long the detector collects light
        text: qsTr("Integration Time:")
    }
    Fact {
        heading: integrationTime.text
        value: facts.camera ? facts.camera.statusTabModel.integrationTime : ""
    }

    Caption {
        id: frameSize
        //: Status: width and height of the image
        text: qsTr("Frame Size:")
    }
    Fact {
        heading: frameSize.text
        value: facts.camera ? facts.camera.statusTabModel.frameSize : ""
    }

    Caption {
        id: frameRate
        //: Status: images per second
        text: qsTr("Frame Rate:")
    }
    Fact {
        heading: frameRate.text
        value: facts.camera ? facts.camera.statusTabModel.frameRate : ""
    }

    Caption {
        id: time
        //: Status: the camera's clock
        text: qsTr("Time:")
    }
    Fact {
        heading: time.text
        value: facts.camera ? facts.camera.statusTabModel.time : ""
    }

    Caption {
        id: operatingTime
        //: Status: the total time for which the camera has run
        text: qsTr("Operating Time:")
    }
    Fact {
        heading: operatingTime.text
        value: facts.camera ? facts.camera.statusTabModel.operatingTime : ""
    }

    Caption {
        id: type
        //: Status: the type of the camera
        text: qsTr("Type:")
    }
    Fact {
        heading: type.text
        value: facts.camera ? facts._joined([facts.camera.readoutName, facts.camera.detectorTypeName,
                                             facts.camera.cameraSubtypeName], ", ") : ""
    }

    Caption {
        id: saturation
        //: Status: whether pixels are saturated
        text: qsTr("Saturation:")
    }
    RowLayout {
        spacing: 8

        GlyphLabel {
            objectName: "saturationGlyph"
            visible: text !== ""
            Layout.preferredWidth: 16
            Layout.alignment: Qt.AlignTop
            text: !facts.connected ? Glyph.question
                                    : !facts._saturationRead ? "" : facts._saturated ? Glyph.cross : Glyph.apply
            color: !facts.connected ? Look.kestrinSecondaryCoolGray
                                     : facts._saturated ? Look.tidepoolAccentRed : Look.tidepoolAccentGreen
        }

        Fact {
            heading: saturation.text
            //: Saturation
            value: !facts.connected ? qsTr("Unknown")
                                     : !facts._saturationRead ? ""
                                     //: Saturation
                                     : facts._saturated ? qsTr("Bad. Above at least one threshold.")
                                                        //: Saturation
                                                        : qsTr("Good. Under all thresholds.")
        }
    }
}
