import QtQuick

// The body of a section with one model, with what such sections have in common. While the model is read, the controls
// are disabled, except for the one that the operator is using.
SectionBody {
    id: body

    // Those of the section's model.
    property bool refreshing
    property bool hasRefreshed
    // The number of reads. The bindings of controls depend on it, because a choice that the camera has refused changes
    // no value of the model: the control shows the model's value again after the next read.
    property int reads
    readonly property int presets: camera ? camera.setupGeneralModel.numPresets : 0

    // A number of the model as text; an empty one before the first read, and for a number that is not finite.
    function text(number: real, decimals: int): string {
        return camera && reads > 0 && isFinite(number) ? camera.safeConvertFloatToLocaleString(number, decimals) : ""
    }

    onHasRefreshedChanged: {
        if (hasRefreshed)
            reads += 1
    }
    Component.onCompleted: reads = hasRefreshed ? 1 : 0
}
