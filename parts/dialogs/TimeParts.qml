import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// Fields for the parts of a date and time. Parts out of range are marked as wrong, but still used by time().
GridLayout {
    id: parts

    // Enter was pressed in a field with an acceptable number.
    signal confirmed

    // Shows a time. Empties the fields if it is invalid.
    function show(time: var) {
        const known = !isNaN(time.getTime())
        month.currentIndex = known ? time.getMonth() : -1
        day.show(known ? time.getDate() : "")
        year.show(known ? time.getFullYear() : "")
        hour.show(known ? time.getHours() : "")
        minute.show(known ? time.getMinutes() : "")
        second.show(known ? time.getSeconds() : "")
    }

    // The time in the fields; invalid if a field does not contain a number or no month is chosen.
    function time(): date {
        return new Date(year.number, month.currentIndex < 0 ? NaN : month.currentIndex, day.number, hour.number,
                        minute.number, second.number)
    }

    component PartLabel: PlainLabel {
        Layout.fillWidth: true
        Accessible.ignored: true
        horizontalAlignment: Text.AlignRight
    }

    component PartBox: NumberBox {
        function show(number: string) {
            modelText = number
            revert()
        }

        implicitWidth: 64
        decimals: -1
        onEntered: number => modelText = number
        onConfirmed: parts.confirmed()
    }

    columns: 6
    columnSpacing: 8
    rowSpacing: Look.rowSpacing

    Choice {
        id: month

        Layout.columnSpan: 2
        Layout.fillWidth: true
        Layout.preferredWidth: 120
        //: A part of a date
        Accessible.name: qsTr("month")
        //: A month
        model: [qsTr("January"),
                //: A month
                qsTr("February"),
                //: A month
                qsTr("March"),
                //: A month
                qsTr("April"),
                //: A month
                qsTr("May"),
                //: A month
                qsTr("June"),
                //: A month
                qsTr("July"),
                //: A month
                qsTr("August"),
                //: A month
                qsTr("September"),
                //: A month
                qsTr("October"),
                //: A month
                qsTr("November"),
                //: A month
                qsTr("December")]
    }

    PartLabel {
        id: dayLabel

        //: A part of a date
        text: qsTr("day")
    }

    PartBox {
        id: day

        name: dayLabel.text
        //: Two digits of a day
        placeholderText: qsTr("DD")
        from: 1
        to: 31
    }

    PartLabel {
        id: yearLabel

        //: A part of a date
        text: qsTr("year")
    }

    PartBox {
        id: year

        name: yearLabel.text
        //: Four digits of a year
        placeholderText: qsTr("YYYY")
        // The camera's clock stores the years since 2000 in one byte.
        from: 2000
        to: 2255
    }

    PartLabel {
        id: hourLabel

        //: A part of a time of day
        text: qsTr("hour")
    }

    PartBox {
        id: hour

        name: hourLabel.text
        //: Two digits of an hour
        placeholderText: qsTr("HH")
        to: 23
    }

    PartLabel {
        id: minuteLabel

        //: A part of a time of day
        text: qsTr("minute")
    }

    PartBox {
        id: minute

        name: minuteLabel.text
        //: Two digits of a minute
        placeholderText: qsTr("MM")
        to: 59
    }

    PartLabel {
        id: secondLabel

        //: A part of a time of day
        text: qsTr("second")
    }

    PartBox {
        id: second

        name: secondLabel.text
        //: Two digits of a second
        placeholderText: qsTr("SS")
        to: 59
    }
}
