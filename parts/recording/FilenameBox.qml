import QtQuick
import zvt.look
import zvt.rows

// A field for the name of a recording: 1 to 100 characters. It does not start with a blank, and blanks are its only
// white space. Any other text is marked as wrong. Characters beyond the camera's limit in bytes cannot be typed.
EntryBox {
    acceptable: /^\S[\S ]{0,99}$/u.test(text)
    maximumBytes: Fields.longestRecordingName
    marked: modelText !== "" && !acceptable
    //: Tool tip of a field
    fault: !edited || acceptable ? "" : qsTr("Not a name of 1 to 100 characters")
}
