import QtQuick
import zvt.rows

// The body of a section of the Advanced page, with what the sections have in common. While the section is read, its
// controls are disabled, except for the one that the operator is using.
SectionBody {
    id: body

    // The flags of the section's model.
    property bool refreshing
    property bool hasRefreshed
    // The number of reads that have ended with a connected camera while the body exists.
    property int reads

    // A number of the model as text; an empty one for NaN.
    function text(number: real, decimals: int): string {
        return camera && !isNaN(number) ? camera.safeConvertFloatToLocaleString(number, decimals) : ""
    }

    onHasRefreshedChanged: {
        if (hasRefreshed && connected)
            reads += 1
    }
}
