import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The time of a trigger by time. A number in one field is sent at once, together with the others. The camera decides
// which times it accepts; after a refused number, the field shows the camera's number again.
SettingRow {
    id: row

    required property SyncSettingsModel sync
    // Whether the values are being read.
    required property bool busy

    // Day 0 has not been read: days count from 1.
    readonly property bool _wasRead: sync ? sync.triggerTimeDay !== 0 : false

    component Part: CaptionedNumber {
        required property int value

        rowName: row.name
        boxWidth: 56
        from: -2147483648
        to: 2147483647
        modelText: row._wasRead ? value : ""
    }

    enabled: !busy || day.inUse || hour.inUse || minute.inUse || second.inUse || millisecond.inUse || microsecond.inUse
    //: The time of a trigger by time
    heading: qsTr("Trigger Time")

    GridLayout {
        columns: 3
        columnSpacing: 8
        rowSpacing: Look.rowSpacing

        Part {
            id: day

            //: Of the year
            caption: qsTr("day:")
            value: row.sync ? row.sync.triggerTimeDay : 0
            onEntered: number => row.sync.triggerTimeDay = number
        }

        Part {
            id: hour

            //: Of a time of day
            caption: qsTr("hour:")
            value: row.sync ? row.sync.triggerTimeHour : 0
            onEntered: number => row.sync.triggerTimeHour = number
        }

        Part {
            id: minute

            //: Minute of a time of day
            caption: qsTr("min:")
            value: row.sync ? row.sync.triggerTimeMinute : 0
            onEntered: number => row.sync.triggerTimeMinute = number
        }

        Part {
            id: second

            //: Second of a time of day
            caption: qsTr("sec:")
            value: row.sync ? row.sync.triggerTimeSecond : 0
            onEntered: number => row.sync.triggerTimeSecond = number
        }

        Part {
            id: millisecond

            //: Millisecond of a time of day
            caption: qsTr("ms:")
            value: row.sync ? row.sync.triggerTimeMillisecond : 0
            onEntered: number => row.sync.triggerTimeMillisecond = number
        }

        Part {
            id: microsecond

            //: Microsecond of a time of day
            caption: qsTr("us:")
            value: row.sync ? row.sync.triggerTimeMicrosecond : 0
            onEntered: number => row.sync.triggerTimeMicrosecond = number
        }
    }
}
