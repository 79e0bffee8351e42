import QtQuick
import QtQuick.Templates as T
import zvt.look

// A list of rows in a frame. It shows a spinner while `busy`, and a text while it is empty. It only reports the keys:
// what is selected is decided by the file that uses it.
Rectangle {
    id: frame

    property alias model: list.model
    property alias delegate: list.delegate
    // Headings above the rows, which do not scroll.
    property alias header: headings.sourceComponent
    readonly property alias list: list
    // The accessible name.
    property string name
    property bool busy
    // The object name of the spinner.
    property string spinnerName
    // Whether the list has been read, so that an empty one is known to be empty.
    property bool wasRead
    property string emptyText

    // A key moves the selection by this number of rows, at most to the first or the last one. `modifiers` are those of
    // the keyboard.
    signal stepped(rows: int, modifiers: int)
    // Enter was pressed.
    signal confirmed

    function _rowsOf(key: int): int {
        const page = Math.max(1, Math.floor(list.height / Look.rowHeight))
        switch (key) {
        case Qt.Key_Up:
            return -1
        case Qt.Key_Down:
            return 1
        case Qt.Key_PageUp:
            return -page
        case Qt.Key_PageDown:
            return page
        case Qt.Key_Home:
            return -list.count
        case Qt.Key_End:
            return list.count
        default:
            return 0
        }
    }

    implicitHeight: 240
    radius: Look.controlRadius
    color: Look.fieldColor
    border.color: Look.fieldFrameColor

    Loader {
        id: headings

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 1
    }

    ListView {
        id: list

        // The focus ring is inside, because the list clips its contents.
        readonly property int ringOutset: -1

        anchors.left: headings.left
        anchors.right: headings.right
        anchors.top: headings.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        // Not used. The view makes the first row of a new model the current one, which then takes the keyboard focus.
        currentIndex: -1
        onCurrentItemChanged: {
            if (currentItem)
                currentItem.focus = false
        }

        Accessible.name: frame.name
        Accessible.role: Accessible.List
        Keys.onReturnPressed: frame.confirmed()
        Keys.onEnterPressed: frame.confirmed()
        Keys.onPressed: event => {
            const rows = frame._rowsOf(event.key)
            event.accepted = rows !== 0
            if (event.accepted)
                frame.stepped(rows, event.modifiers)
        }

        T.ScrollBar.vertical: SlimScrollBar {}
    }

    PlainLabel {
        anchors.fill: list
        anchors.margins: 12
        visible: frame.wasRead && list.count === 0
        text: frame.emptyText
        color: Look.dimTextColor
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }

    Loader {
        anchors.centerIn: list
        active: frame.busy && frame.visible
        sourceComponent: Spinner {
            objectName: frame.spinnerName
        }
    }
}
