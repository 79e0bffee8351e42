import QtQuick
import zvt.look
import zvt.rows

// The body of the ROIC Config section: the timing of the readout circuit. Each number is written when it has been
// entered. A width is a number of clocks; its time is another view of it.
ModelBody {
    id: settings

    readonly property int _labelWidth: 132
    readonly property real _largest: 4294967295
    readonly property bool _overrides: camera ? camera.mfgTabModel.roicConfig.overrideDefaults : false
    // Microseconds in a period of the clock; NaN while it is not known.
    readonly property real _period: camera ? camera.mfgTabModel.roicConfig.lineDeadTime
                                             / camera.mfgTabModel.roicConfig.lineDeadWidth : NaN
    // The longest time whose width fits in 32 bits, in whole microseconds. Half a clock is left for rounding errors.
    readonly property real _longest: isFinite(_period) ? Math.floor((_largest - 0.5) * _period) : _largest

    // The text of a number of the model, or of its time; empty until the number, named by its property, is known. The
    // model does not signal a 0 that it has read, but `reads` changes at the end of each read.
    function _textOf(name: string, value: real, decimals: int): string {
        const known = reads >= 0 && camera && (value !== 0 || camera.mfgTabModel.roicConfig.wasRead(name))
        return text(known ? value : NaN, decimals)
    }

    component RowsRow: NumberRow {
        // The name of the property, and its value.
        required property string number
        required property real rows

        labelWidth: settings._labelWidth
        enabled: settings._overrides
        to: settings._largest
        modelText: settings._textOf(number, rows, 0)
    }

    // The fields for a width and its time.
    component WidthRow: SettingRow {
        id: widthRow

        // The name of the property, its value and its time.
        required property string number
        required property real clocks
        required property real microseconds

        signal widthEntered(clocks: real)
        signal timeEntered(microseconds: real)

        labelWidth: settings._labelWidth
        enabled: settings._overrides

        NumberBox {
            id: widthBox

            name: widthRow.name
            to: settings._largest
            modelText: settings._textOf(widthRow.number, widthRow.clocks, 0)
            onEntered: clocks => widthRow.widthEntered(clocks)
        }

        PlainLabel {
            leftPadding: 8
            Accessible.ignored: true
            opacity: enabled ? 1 : Look.disabledOpacity
            text: "Time (us):"
        }

        NumberBox {
            id: timeBox

            // The time is shown in the operator's format, since the field accepts no other decimal point.
            name: widthRow.name + " Time (us)"
            to: settings._longest
            decimals: -1
            modelText: settings._textOf(widthRow.number, widthRow.microseconds, 2)
            // The shown time is rounded: the same text typed again must not change the width.
            onEntered: microseconds => {
                if (microseconds !== Numbers.parse(modelText, -1))
                    widthRow.timeEntered(microseconds)
            }
        }
    }

    refreshing: camera ? camera.mfgTabModel.roicConfig.refreshing : false

    RowGroup {
        ToggleRow {
            labelWidth: settings._labelWidth
            text: "Override Defaults"
            // Not by the property above, which does not change when the camera refuses the switch.
            checked: settings.camera ? settings.camera.mfgTabModel.roicConfig.overrideDefaults : false
            onToggled: settings.camera.mfgTabModel.roicConfig.overrideDefaults = checked
        }

        WidthRow {
            heading: "Line Dead Width:"
            number: "lineDeadWidth"
            clocks: settings.camera ? settings.camera.mfgTabModel.roicConfig.lineDeadWidth : 0
            microseconds: settings.camera ? settings.camera.mfgTabModel.roicConfig.lineDeadTime : 0
            onWidthEntered: clocks => settings.camera.mfgTabModel.roicConfig.lineDeadWidth = clocks
            onTimeEntered: microseconds => settings.camera.mfgTabModel.roicConfig.lineDeadTime = microseconds
        }

        WidthRow {
            heading: "Pre Int Width:"
            number: "preIntWidth"
            clocks: settings.camera ? settings.camera.mfgTabModel.roicConfig.preIntWidth : 0
            microseconds: settings.camera ? settings.camera.mfgTabModel.roicConfig.preIntTime : 0
            onWidthEntered: clocks => settings.camera.mfgTabModel.roicConfig.preIntWidth = clocks
            onTimeEntered: microseconds => settings.camera.mfgTabModel.roicConfig.preIntTime = microseconds
        }

        WidthRow {
            heading: "Post Int Width:"
            number: "postIntWidth"
            clocks: settings.camera ? settings.camera.mfgTabModel.roicConfig.postIntWidth : 0
            microseconds: settings.camera ? settings.camera.mfgTabModel.roicConfig.postIntTime : 0
            onWidthEntered: clocks => settings.camera.mfgTabModel.roicConfig.postIntWidth = clocks
            onTimeEntered: microseconds => settings.camera.mfgTabModel.roicConfig.postIntTime = microseconds
        }

        RowsRow {
            heading: "Pre Dead Rows:"
            number: "preDeadRows"
            rows: settings.camera ? settings.camera.mfgTabModel.roicConfig.preDeadRows : 0
            onEntered: rows => settings.camera.mfgTabModel.roicConfig.preDeadRows = rows
        }

        RowsRow {
            heading: "Post Dead Rows:"
            number: "postDeadRows"
            rows: settings.camera ? settings.camera.mfgTabModel.roicConfig.postDeadRows : 0
            onEntered: rows => settings.camera.mfgTabModel.roicConfig.postDeadRows = rows
        }

        ToggleRow {
            labelWidth: settings._labelWidth
            enabled: settings._overrides
            text: "Has Extra LSync"
            checked: settings.camera ? settings.camera.mfgTabModel.roicConfig.hasExtraLSync : false
            onToggled: settings.camera.mfgTabModel.roicConfig.hasExtraLSync = checked
        }
    }
}
