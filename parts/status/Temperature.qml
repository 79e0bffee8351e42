import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// A temperature: the number and its unit, each in a place of its own, and the last ten minutes beside them.
RowLayout {
    id: temperature

    required property ZvtCameraModel camera
    required property string heading
    required property real degrees
    property string unit: " °C"
    property color color: Look.strongTextColor
    property color trendColor: Look.knobColor
    // Whether there is little room.
    property bool dense
    // Whether a reading was signalled. The model's values start at zero, and zero can be read too.
    property bool read
    // What is in front of the number.
    default property alias sign: signPlace.data

    readonly property bool known: read || degrees !== 0
    readonly property string number: camera && known ? camera.safeConvertFloatToLocaleString(degrees, 2) : ""
    readonly property string text: number === "" ? "" : number + unit

    // Milliseconds.
    readonly property int _span: 600000
    property var _points: []

    // Adds the temperature to the trend, as read at a time in milliseconds.
    function note(now: real) {
        if (visible && known && isFinite(degrees))
            _points = _points.filter(point => now - point.at < _span).concat({ at: now, value: degrees })
    }

    // Starts the trend again.
    function forget() {
        _points = []
    }

    spacing: 0
    opacity: enabled ? 1 : Look.disabledOpacity
    Layout.fillWidth: true
    Accessible.role: Accessible.StaticText
    Accessible.name: heading.replace(":", "")
    Accessible.description: text

    TextMetrics {
        id: longest

        font: numberLabel.font
        text: "-0000.00"
    }

    Item {
        id: signPlace

        implicitWidth: 16
        implicitHeight: 16
    }

    PlainLabel {
        id: numberLabel

        Layout.preferredWidth: Math.ceil(longest.advanceWidth)
        Accessible.ignored: true
        text: temperature.number
        color: temperature.color
        font.pixelSize: 18
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.WrapAnywhere
    }

    PlainLabel {
        Layout.minimumWidth: 34
        Accessible.ignored: true
        text: temperature.number === "" ? "" : temperature.unit
        leftPadding: 6
        color: Look.dimTextColor
        font.pixelSize: Look.hintSize
    }

    Loader {
        // A line needs two points.
        active: temperature._points.length > 1
        sourceComponent: Trend {
            points: temperature._points
            span: temperature._span
            color: temperature.trendColor
        }
        Layout.preferredWidth: 92
        Layout.preferredHeight: temperature.dense ? 22 : 36
    }

    Item {
        Layout.fillWidth: true
    }
}
