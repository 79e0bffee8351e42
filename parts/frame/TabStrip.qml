import QtQuick
import QtQuick.Templates as T

// The tabs of the pages, which share its width evenly.
T.TabBar {
    id: strip

    readonly property int _availableTabs: {
        let available = 0
        for (let index = 0; index < count; ++index)
            available += itemAt(index).available ? 1 : 0
        return available
    }
    readonly property real tabWidth: _availableTabs === 0 ? 0 : width / _availableTabs

    // To the next tab that is available, and from the last to the first.
    function step(by: int) {
        let index = currentIndex
        do {
            index = (index + by + count) % count
        } while (!itemAt(index).available)
        currentIndex = index
    }

    // By the arrow keys, which take the focus along.
    function _walk(by: int) {
        step(by)
        const tab = itemAt(currentIndex) as T.TabButton
        tab.forceActiveFocus(Qt.TabFocusReason)
        // The list view has given it the focus already, with another reason.
        tab.focusReason = Qt.TabFocusReason
    }

    // The width of the tabs follows that of the strip.
    implicitWidth: 0
    contentHeight: height

    Keys.onLeftPressed: _walk(-1)
    Keys.onRightPressed: _walk(1)

    contentItem: ListView {
        model: strip.contentModel
        currentIndex: strip.currentIndex
        orientation: ListView.Horizontal
        interactive: false
    }
}
