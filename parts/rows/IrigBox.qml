import QtQuick

// A field for an IRIG time, such as "045:07:05:09.012345": the day of the year, counted from 1, and the time of the
// day. A text that is none is marked as wrong.
EntryBox {
    // The number of decimals of the seconds.
    property int decimals: 6

    acceptable: acceptableInput
                && /^(?!000)([0-2]\d\d|3[0-5]\d|36[0-6]):([01]\d|2[0-3]):[0-5]\d:[0-5]\d\.\d+$/.test(text)
    implicitWidth: 168
    inputMask: "999:99:99:99." + "9".repeat(decimals)
    //: Tool tip of a field; IRIG is a time code
    fault: !edited || acceptable ? "" : qsTr("Not an IRIG time")
    // Setting the mask counts as an edit.
    Component.onCompleted: revert()
}
