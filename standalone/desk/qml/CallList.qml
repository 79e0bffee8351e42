import QtQuick
import QtQuick.Controls
import zvt.controller.desk

// The list of calls, the newest at the top.
ListView {
    id: list

    required property CallListModel calls

    // Whether the user reads the list: the pointer is over it, or it is scrolled.
    readonly property bool isRead: hover.hovered || contentY > originY

    height: 8 * DeskLook.callHeight
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    keyNavigationEnabled: false
    model: calls
    delegate: CallRow {
        id: row

        required property int index
        required property var model

        width: list.width
        time: model.time
        thread: model.thread
        name: model.name
        inputs: model.inputs
        status: model.status
        duration: model.duration
        failed: model.failed

        Rectangle {
            z: -1
            anchors.fill: parent
            visible: row.index % 2 === 0
            color: DeskLook.fieldColor
        }
    }

    ScrollBar.vertical: ScrollBar { }

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Calls list")

    Keys.onDownPressed: contentY = Math.min(contentY + DeskLook.callHeight, Math.max(contentHeight - height, 0))
    Keys.onUpPressed: contentY = Math.max(contentY - DeskLook.callHeight, 0)

    HoverHandler {
        id: hover
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: 2
        border.color: DeskLook.accentColor
        visible: list.activeFocus
    }
    Text {
        anchors.centerIn: parent
        visible: list.count === 0
        text: list.calls.filter || list.calls.onlyFailed ? qsTr("No such calls") : qsTr("No calls")
        color: DeskLook.dimTextColor
        font.pixelSize: DeskLook.textSize
    }
}
