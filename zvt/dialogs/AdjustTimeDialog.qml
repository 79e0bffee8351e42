import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "../controls"

// Shows the camera's clock and sets it, by hand or from the computer's clock. What is typed is taken as it is: the
// camera judges.
InformationDialog {
    id: dialog

    required property var timeModel

    // The fields are no bindings: "Get" shows the camera's time over what was typed even if it is the same time.
    function _show() {
        const time = dialog.timeModel.cameraTime
        const known = !isNaN(time.getTime())
        month.currentIndex = known ? time.getMonth() : -1
        day.text = known ? time.getDate() : ""
        year.text = known ? time.getFullYear() : ""
        hour.text = known ? time.getHours() : ""
        minute.text = known ? time.getMinutes() : ""
        second.text = known ? time.getSeconds() : ""
    }

    // An empty text is no number, and no date comes of it.
    function _number(text: string): real {
        return /\S/.test(text) ? Number(text) : NaN
    }

    function _set() {
        timeModel.cameraTime = new Date(_number(year.text), month.currentIndex < 0 ? NaN : month.currentIndex,
                                        _number(day.text), _number(hour.text), _number(minute.text),
                                        _number(second.text))
    }

    //: Title of a dialog
    title: qsTr("Adjust Time")
    initialFocus: closeButton
    onVisibleChanged: {
        if (visible) {
            _show()
            timeModel.refresh()
        }
    }

    component PartLabel: Label {
        Layout.fillWidth: true
        Accessible.ignored: true
        color: root.textColor
        horizontalAlignment: Text.AlignRight
    }

    component PartField: TextField {
        id: field

        implicitWidth: 64
        implicitHeight: root.rowHeight
        selectByMouse: true
        onAccepted: dialog._set()

        background: Rectangle {
            radius: 2
            color: root.fieldColor
            border.color: field.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor
        }
    }

    contentItem: ColumnLayout {
        spacing: 16

        GridLayout {
            columns: 6
            columnSpacing: 8
            rowSpacing: root.rowSpacing

            ComboBox {
                id: month

                Layout.columnSpan: 2
                Layout.fillWidth: true
                implicitHeight: root.rowHeight
                //: A part of a date
                Accessible.name: qsTr("month")
                model: [
                    qsTr("January"), qsTr("February"), qsTr("March"), qsTr("April"), qsTr("May"), qsTr("June"),
                    qsTr("July"), qsTr("August"), qsTr("September"), qsTr("October"), qsTr("November"),
                    qsTr("December")
                ]
            }

            PartLabel {
                id: dayLabel

                //: A part of a date
                text: qsTr("day")
            }

            PartField {
                id: day

                Accessible.name: dayLabel.text
                //: Two digits of a day
                placeholderText: qsTr("DD")
            }

            PartLabel {
                id: yearLabel

                //: A part of a date
                text: qsTr("year")
            }

            PartField {
                id: year

                Accessible.name: yearLabel.text
                //: Four digits of a year
                placeholderText: qsTr("YYYY")
            }

            PartLabel {
                id: hourLabel

                //: A part of a time of day
                text: qsTr("hour")
            }

            PartField {
                id: hour

                Accessible.name: hourLabel.text
                //: Two digits of an hour
                placeholderText: qsTr("HH")
            }

            PartLabel {
                id: minuteLabel

                //: A part of a time of day
                text: qsTr("minute")
            }

            PartField {
                id: minute

                Accessible.name: minuteLabel.text
                //: Two digits of a minute
                placeholderText: qsTr("MM")
            }

            PartLabel {
                id: secondLabel

                //: A part of a time of day
                text: qsTr("second")
            }

            PartField {
                id: second

                Accessible.name: secondLabel.text
                //: Two digits of a second
                placeholderText: qsTr("SS")
            }
        }

        WrappingButton {
            //: Sets the camera's clock by the computer's
            text: qsTr("Sync camera time to PC time")
            onClicked: dialog.timeModel.syncCameraTimeToPC()
        }
    }
    buttons: [
        WrappingButton {
            width: Math.max(88, implicitWidth)
            //: Shows the time of the camera's clock
            text: qsTr("Get")
            onClicked: dialog.timeModel.getCameraTime()
        },
        WrappingButton {
            width: Math.max(88, implicitWidth)
            //: Sets the camera's clock
            text: qsTr("Set")
            onClicked: dialog._set()
        },
        WrappingButton {
            id: closeButton

            width: Math.max(88, implicitWidth)
            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    ]

    Connections {
        target: dialog.timeModel
        function onCameraTimeChanged() {
            dialog._show()
        }
    }
}
