import QtQuick
import QtQuick.Controls

// The number of a preset on the Correction tab: tells whether the preset is in use. A press does nothing.
Button {
    id: label

    required property int presetNumber
    required property var setupGeneralModel

    // The sequencing modes, by the numbers of ESEQUENCING_MODE.
    readonly property int _mode: setupGeneralModel?.sequencingMode ?? 0
    readonly property bool _superframing: _mode === 1
    readonly property bool _sequencing: _mode === 2

    readonly property var _preset: setupGeneralModel?.ps(presetNumber) ?? null
    readonly property bool _active: (setupGeneralModel?.activePreset ?? -1) === presetNumber
    readonly property bool _inSequence: (_preset?.dwellCount ?? 0) > 0
    readonly property bool _inSuperframe: _preset?.subframeEnabled ?? false
    readonly property bool inUse: _superframing ? _inSuperframe : _sequencing ? _inSequence : _active
    readonly property string toolTip: _toolTip()

    function _toolTip(): string {
        if (_superframing)
            //: Tool tip of a preset's number
            return _inSuperframe ? qsTr("Preset included in superframe.") : qsTr("Preset excluded from superframe.")
        if (_sequencing)
            //: Tool tip of a preset's number
            return _inSequence ? qsTr("Preset included in sequence. (Dwell is greater than 0)")
                               : qsTr("Preset excluded from sequence. (Dwell is 0)")
        //: Tool tip of a preset's number
        return _active ? qsTr("This is the Active Preset") : ""
    }

    implicitWidth: 34
    implicitHeight: root.rowHeight
    padding: 0
    focusPolicy: Qt.NoFocus
    text: presetNumber

    Accessible.name: text

    contentItem: Text {
        text: label.text
        font.family: label.font.family
        font.pixelSize: label.inUse ? root.textSize + 3 : root.textSize
        font.bold: label.inUse
        color: label.inUse ? root.kestrinAccentBlue : root.textColor
        opacity: label.enabled ? 1 : 0.5
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: 3
        color: root.fieldColor
        border.width: label.inUse ? 3 : 1
        border.color: label.inUse ? root.kestrinAccentBlue : root.fieldFrameColor
    }

    ToolTip {
        visible: label.toolTip !== "" && label.hovered
        delay: 600
        text: label.toolTip
        palette: root.palette
        font.pixelSize: root.hintSize
    }
}
