pragma Singleton
import QtQuick

// What the fields share that can be typed into.
QtObject {
    // Whether the field is disabled or about to be. A focus scope that is disabled takes the focus away from a field inside
    // before the field itself is disabled.
    function isDisabled(field: Item): bool {
        let item = field
        while (item && item.enabled)
            item = item.parent
        return item !== null
    }
}
