import QtQuick

// The body of a section with a model of its own, with what such sections have in common. While the model is read, the
// controls are disabled, except for the one that the operator is using.
SectionBody {
    id: body

    // Whether the model is being read.
    property bool refreshing
    // The number of reads that have ended with a connected camera while the body exists. The binding of a control
    // depends on it if a read does not signal an unchanged value, but must replace a choice that the camera has refused.
    property int reads

    // A number of the model as text; an empty one for a number that is not finite.
    function text(number: real, decimals: int): string {
        return camera && isFinite(number) ? camera.safeConvertFloatToLocaleString(number, decimals) : ""
    }

    onRefreshingChanged: {
        if (!refreshing && connected)
            reads += 1
    }
}
