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

    // Whether a read has ended with a connected camera. `reads` does not tell: the model has been read from the first
    // read on, also if no camera was connected then.
    property bool _wasRead

    function _textOf(number: real, decimals: int): string {
        return text(_wasRead ? number : NaN, decimals)
    }

    component RowsRow: NumberRow {
        labelWidth: settings._labelWidth
        enabled: settings._overrides
        to: settings._largest
    }

    // The fields for a width and its time.
    component WidthRow: SettingRow {
        id: widthRow

        property alias widthText: widthBox.modelText
        property alias timeText: timeBox.modelText

        signal widthEntered(clocks: real)
        signal timeEntered(microseconds: real)

        labelWidth: settings._labelWidth
        enabled: settings._overrides

        NumberBox {
            id: widthBox

            name: widthRow.name
            to: settings._largest
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

            name: widthRow.name + " Time (us)"
            decimals: -1
            // The shown time is rounded: the same text typed again must not change the width.
            onEntered: microseconds => {
                if (microseconds !== Numbers.parse(modelText, -1))
                    widthRow.timeEntered(microseconds)
            }
        }
    }

    refreshing: camera ? camera.mfgTabModel.roicConfig.refreshing : false
    hasRefreshed: camera ? camera.mfgTabModel.roicConfig.hasRefreshed : false
    onRefreshingChanged: {
        if (!refreshing && connected)
            _wasRead = true
    }
    Component.onCompleted: _wasRead = hasRefreshed && connected

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
            widthText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.lineDeadWidth : NaN, 0)
            timeText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.lineDeadTime : NaN, 2)
            onWidthEntered: clocks => settings.camera.mfgTabModel.roicConfig.lineDeadWidth = clocks
            onTimeEntered: microseconds => settings.camera.mfgTabModel.roicConfig.lineDeadTime = microseconds
        }

        WidthRow {
            heading: "Pre Int Width:"
            widthText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.preIntWidth : NaN, 0)
            timeText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.preIntTime : NaN, 2)
            onWidthEntered: clocks => settings.camera.mfgTabModel.roicConfig.preIntWidth = clocks
            onTimeEntered: microseconds => settings.camera.mfgTabModel.roicConfig.preIntTime = microseconds
        }

        WidthRow {
            heading: "Post Int Width:"
            widthText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.postIntWidth : NaN, 0)
            timeText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.postIntTime : NaN, 2)
            onWidthEntered: clocks => settings.camera.mfgTabModel.roicConfig.postIntWidth = clocks
            onTimeEntered: microseconds => settings.camera.mfgTabModel.roicConfig.postIntTime = microseconds
        }

        RowsRow {
            heading: "Pre Dead Rows:"
            modelText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.preDeadRows : NaN, 0)
            onEntered: rows => settings.camera.mfgTabModel.roicConfig.preDeadRows = rows
        }

        RowsRow {
            heading: "Post Dead Rows:"
            modelText: settings._textOf(settings.camera ? settings.camera.mfgTabModel.roicConfig.postDeadRows : NaN, 0)
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
