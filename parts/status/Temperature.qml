import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// A temperature: an icon, the number, its unit and the trend of the last ten minutes, in columns of fixed width.
RowLayout {
    id: temperature

    required property ZvtCameraModel camera
    required property string heading
    required property real degrees
    property string unit: " °C"
    property color color: Look.strongTextColor
    property color trendColor: Look.knobColor
    // Whether there is little space.
    property bool dense
    // Whether the model has signalled a read value. Its values start at 0, which is also a possible temperature.
    property bool read
    // The icon in front of the number.
    default property alias leadingIcon: iconPlace.data

    readonly property bool known: read || degrees !== 0
    readonly property string number: camera && known ? camera.safeConvertFloatToLocaleString(degrees, 2) : ""
    readonly property string text: number === "" ? "" : number + unit

    // The time shown by the trend, in milliseconds.
    readonly property int _span: 600000
    property var _points: []

    // Adds the current temperature to the trend. `now` is the time of the read, in milliseconds.
    function addPoint(now: real) {
        if (visible && known && isFinite(degrees))
            _points = _points.filter(point => now - point.at < _span).concat({ at: now, value: degrees })
    }

    // Empties the trend.
    function clearTrend() {
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
        id: iconPlace

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
