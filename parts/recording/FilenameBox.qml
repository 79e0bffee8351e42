import QtQuick
import zvt.look
import zvt.rows

// A field for the name of a recording: 1 to 100 characters, of which the first is no blank and the others are no white
// space but blanks. Another text is marked as wrong. What exceeds the camera's limit in bytes cannot be typed.
EntryBox {
    acceptable: /^\S[\S ]{0,99}$/u.test(text)
    maximumBytes: Fields.longestRecordingName
    marked: modelText !== "" && !acceptable
    //: Tool tip of a field
    fault: !edited || acceptable ? "" : qsTr("Not a name of 1 to 100 characters")
}
