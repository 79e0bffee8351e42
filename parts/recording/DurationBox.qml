import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// A field for the duration of a recording, such as "01:30:00". A text that is not a time of day is marked as wrong. The
// camera's duration can be such a text too: one of 24 hours is shown as an empty mask. A duration that is longer than
// the recorder can record is marked by another colour, as a warning only.
EntryBox {
    id: box

    required property SsdTabModel model

    readonly property bool tooLong: enabled && _isTime && !model.externalSync && _duration > model.maxRecordDuration
    // The duration in the field, as a date object. It is invalid if the text is not a time of day.
    readonly property var _duration: model ? model.timeFromString(text) : null
    readonly property bool _isTime: _duration ? !isNaN(_duration.getTime()) : false

    acceptable: acceptableInput && _isTime
    marked: !acceptable
    modelText: model ? Qt.formatTime(model.recordDuration, "HH:mm:ss") : ""
    horizontalAlignment: Text.AlignRight
    inputMask: "99:99:99"
    // Setting the mask counts as an edit.
    Component.onCompleted: revert()
    color: tooLong ? Look.inverseTextColor : Look.fieldTextColor
    //: Tool tip of a field; %1 is a duration, %2 a frame rate
    toolTip: model ? qsTr("Maximum: %1 at %2 Hz").arg(model.maxRecordDuration.toTimeString())
                     .arg(model.averageFrameRate.toFixed(1)) : ""
    //: Tool tip of a field
    fault: !edited || acceptable ? "" : qsTr("Not a duration")
    onTextEntered: text => model.recordDuration = model.timeFromString(text)

    background: Rectangle {
        radius: Look.controlRadius
        color: box.marked ? Look.errorBackColor : box.tooLong ? Look.warningColor : Look.fieldColor
        border.color: box.marked ? Look.errorFrameColor : Look.fieldFrameColor
    }
}
