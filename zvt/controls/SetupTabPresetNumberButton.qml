import QtQuick
import zvt.look

// The number of a preset on the Setup tab. Shows whether the preset is in use. A click makes it the active one, or in
// superframing includes or excludes it. A click does nothing in preset sequencing or if `readOnly` is set.
WrappingButton {
    id: button

    required property int presetNumber
    required property var setupGeneralModel
    property bool readOnly

    // The numbers of ESEQUENCING_MODE.
    readonly property int _mode: setupGeneralModel?.sequencingMode ?? 0
    readonly property bool _superframing: _mode === 1
    readonly property bool _sequencing: _mode === 2

    readonly property var _preset: setupGeneralModel?.ps(presetNumber) ?? null
    readonly property bool _active: (setupGeneralModel?.activePreset ?? -1) === presetNumber
    readonly property bool _inSequence: (_preset?.dwellCount ?? 0) > 0
    readonly property bool _inSuperframe: _preset?.subframeEnabled ?? false
    readonly property bool inUse: _superframing ? _inSuperframe : _sequencing ? _inSequence : _active

    function _toolTip(): string {
        if (_superframing)
            //: Tool tip of a preset's number
            return _inSuperframe ? qsTr("Preset included in superframe.")
                                 //: Tool tip of a preset's number
                                 : qsTr("Preset excluded from superframe.")
        if (_sequencing)
            //: Tool tip of a preset's number
            return _inSequence ? qsTr("Preset included in sequence. (Dwell is greater than 0)")
                               //: Tool tip of a preset's number
                               : qsTr("Preset excluded from sequence. (Dwell is 0)")
        if (_active)
            //: Tool tip of a preset's number
            return qsTr("This is the Active Preset")
        //: Tool tip of a preset's number
        return readOnly ? "" : qsTr("Make Preset Active")
    }

    implicitWidth: 34
    padding: 0
    leftPadding: 0
    rightPadding: 0
    text: presetNumber
    font.weight: inUse ? Font.DemiBold : Font.Normal
    toolTip: _toolTip()
    textColor: inUse && enabled ? Look.kestrinAccentBlue : Look.textColor
    onClicked: {
        if (readOnly || !setupGeneralModel)
            return
        if (_superframing)
            _preset.subframeEnabled = !_preset.subframeEnabled
        else if (!_sequencing)
            setupGeneralModel.activePreset = presetNumber
    }

    background: Rectangle {
        radius: Look.controlRadius
        color: button.inUse ? Look.onColor : button.hovered || button.down ? Look.buttonHoverColor : Look.fieldColor
        border.color: button.inUse ? Look.kestrinAccentBlue : Look.fieldFrameColor
    }
}
