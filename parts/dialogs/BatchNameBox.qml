import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// A field for the name of the file of a batch entry. A name does not begin with a blank.
EntryBox {
    required property BatchDownloadEntry entry

    acceptable: /^\S.*$/.test(text)
    marked: entry ? !entry.validOutFile : false
    //: Tool tip of a field
    fault: !edited || acceptable ? "" : qsTr("Empty, or begins with a blank")
    toolTip: contentWidth > width - leftPadding - rightPadding ? modelText : ""
    modelText: entry ? entry.outFile : ""
    onTextEntered: text => entry.outFile = text
    // A long name is shown from its beginning.
    onTextChanged: {
        if (!activeFocus)
            cursorPosition = 0
    }
    onActiveFocusChanged: {
        if (!activeFocus)
            cursorPosition = 0
    }
}
