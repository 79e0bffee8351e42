pragma Singleton
import QtQuick

// Helpers for fields that can be typed into.
QtObject {
    // How long a name can be, in bytes of UTF-8: the limits of the camera's storage.
    readonly property int longestNucName: 200
    readonly property int longestStateName: 199
    readonly property int longestRecordingName: 199

    // Whether the field or one of its ancestors is disabled. When a focus scope is disabled, a field inside loses the
    // focus before its own `enabled` changes.
    function isDisabled(field: Item): bool {
        let item = field
        while (item && item.enabled)
            item = item.parent
        return item !== null
    }
}
