import QtQuick
import QtQuick.Templates as T
import zvt

// The tab bar of the pages, in the order of the pages. The available tabs share its width evenly.
T.TabBar {
    id: strip

    // Whether the camera has a recorder, which has a page of its own.
    required property bool hasSsd
    // Whether the page for the factory is available.
    required property bool manufacturing

    readonly property int _availableTabs: {
        let available = 0
        for (let index = 0; index < count; ++index)
            available += itemAt(index).available ? 1 : 0
        return available
    }
    readonly property real tabWidth: _availableTabs === 0 ? 0 : width / _availableTabs

    // Selects the next available tab, in the direction of `by` (1 or -1); wraps around at the ends.
    function step(by: int) {
        let index = currentIndex
        do {
            index = (index + by + count) % count
        } while (!itemAt(index).available)
        currentIndex = index
    }

    // Selects the next available tab and moves the keyboard focus to it.
    function _stepByKey(by: int) {
        step(by)
        const tab = itemAt(currentIndex) as T.TabButton
        tab.forceActiveFocus(Qt.TabFocusReason)
        // The list view has already set the focus, with another reason, so forceActiveFocus() does not change the
        // reason.
        tab.focusReason = Qt.TabFocusReason
    }

    // Otherwise the width of the tab bar would depend on its tabs, whose width depends on the tab bar.
    implicitWidth: 0
    contentHeight: height
    // Another camera may lack the page that is on show.
    on_AvailableTabsChanged: {
        const tab = itemAt(currentIndex)
        if (tab && !tab.available)
            currentIndex = 0
    }

    Keys.onLeftPressed: _stepByKey(-1)
    Keys.onRightPressed: _stepByKey(1)

    contentItem: ListView {
        model: strip.contentModel
        currentIndex: strip.currentIndex
        orientation: ListView.Horizontal
        interactive: false
    }

    PageTabButton {
        width: available ? strip.tabWidth : 0
        //: Title of a page
        text: qsTr("Status")
    }

    PageTabButton {
        width: available ? strip.tabWidth : 0
        //: Title of a page
        text: qsTr("Setup")
    }

    PageTabButton {
        width: available ? strip.tabWidth : 0
        //: Title of a page
        text: qsTr("Correction")
    }

    PageTabButton {
        width: available ? strip.tabWidth : 0
        //: Title of a page
        text: qsTr("Video")
    }

    PageTabButton {
        width: available ? strip.tabWidth : 0
        //: Title of a page: settings that are rarely needed
        text: qsTr("Advanced")
    }

    PageTabButton {
        available: strip.hasSsd
        width: available ? strip.tabWidth : 0
        //: Title of a page: the recorder of the camera and its solid-state drive
        text: qsTr("SSD")
    }

    PageTabButton {
        available: strip.manufacturing
        width: available ? strip.tabWidth : 0
        text: "Mfg"
    }
}
