pragma Singleton
import QtQuick

// Helpers for fields that can be typed into.
QtObject {
    // Whether the field or one of its ancestors is disabled. When a focus scope is disabled, a field inside loses the
    // focus before its own `enabled` changes.
    function isDisabled(field: Item): bool {
        let item = field
        while (item && item.enabled)
            item = item.parent
        return item !== null
    }
}
