import QtQuick
import QtQuick.Templates as T
import zvt.controller.desk

// The bar at the top of the window while any fault is on, with a frame around the window.
Rectangle {
    id: bar

    required property Desk desk

    readonly property string _texts: Array.from(desk.faults.texts).join("; ")

    implicitHeight: 32
    color: DeskLook.faultColor

    Text {
        anchors.verticalCenter: parent.verticalCenter
        x: DeskLook.margin
        width: clear.x - x - DeskLook.spacing
        //: Title of the bar at the top of the window while the user lets the camera misbehave.
        text: qsTr("Faults on") + ": " + bar._texts
        elide: Text.ElideRight
        color: DeskLook.faultTextColor
        font.pixelSize: DeskLook.textSize
        font.weight: Font.DemiBold

        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }

    T.Button {
        id: clear

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: DeskLook.margin
        width: implicitContentWidth + 24
        height: 24
        text: qsTr("Clear all faults")
        // A click leaves the focus where it is.
        focusPolicy: Qt.TabFocus
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: bar.desk.faults.clearAll()

        Accessible.name: text

        background: Rectangle {
            radius: 4
            color: clear.down ? DeskLook.cardColor : clear.hovered ? DeskLook.headerHoverColor : DeskLook.headerColor
            border.width: clear.visualFocus ? 2 : 0
            border.color: DeskLook.accentColor
        }
        contentItem: Text {
            text: clear.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            color: DeskLook.strongTextColor
            font.pixelSize: DeskLook.textSize
        }
    }

    // Above everything, but without any input.
    Rectangle {
        parent: bar.parent
        anchors.fill: parent
        visible: bar.visible
        z: 10
        color: "transparent"
        border.width: 2
        border.color: DeskLook.faultColor
    }
}
