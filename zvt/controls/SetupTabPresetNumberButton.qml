import QtQuick

// The number of a preset on the Setup tab: tells whether the preset is in use, and puts it to use unless it only tells.
WrappingButton {
    id: button

    required property int presetNumber
    required property var setupGeneralModel
    property bool tellsOnly

    // The sequencing modes, by the numbers of ESEQUENCING_MODE.
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
            return _inSuperframe ? qsTr("Preset included in superframe.") : qsTr("Preset excluded from superframe.")
        if (_sequencing)
            //: Tool tip of a preset's number
            return _inSequence ? qsTr("Preset included in sequence. (Dwell is greater than 0)")
                               : qsTr("Preset excluded from sequence. (Dwell is 0)")
        //: Tool tip of a preset's number
        return _active ? qsTr("This is the Active Preset") : tellsOnly ? "" : qsTr("Make Preset Active")
    }

    implicitWidth: 34
    padding: 0
    leftPadding: 0
    rightPadding: 0
    text: presetNumber
    font.bold: inUse
    toolTip: _toolTip()
    textColor: inUse ? root.kestrinAccentBlue : root.textColor
    onClicked: {
        if (tellsOnly)
            return
        if (_superframing)
            _preset.subframeEnabled = !_preset.subframeEnabled
        else if (!_sequencing)
            setupGeneralModel.activePreset = presetNumber
    }

    background: Rectangle {
        radius: 3
        color: button.hovered || button.down ? root.hoverColor : root.fieldColor
        border.width: button.inUse || button.visualFocus ? 2 : 1
        border.color: button.inUse || button.visualFocus ? root.kestrinAccentBlue : root.fieldFrameColor
    }
}
