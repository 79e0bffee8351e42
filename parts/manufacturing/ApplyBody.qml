import QtQuick
import zvt.rows

// The body of a section whose settings have no effect on the camera until the operator applies them.
ModelBody {
    // Whether the operator has changed something since the last read and has not applied it.
    property bool unapplied

    onReadsChanged: unapplied = false
}
