import QtQuick
import QtQuick.Templates as T

// A row with the name and the profile of a camera. The current row is bold and has a bar at its left.
T.AbstractButton {
    id: row

    required property var item
    required property int index

    width: ListView.view.width
    height: FinderLook.rowHeight
    leftPadding: 12
    rightPadding: profile.width + 28
    focusPolicy: Qt.NoFocus
    text: item ? item.name : ""

    Accessible.role: Accessible.ListItem
    Accessible.name: text

    onClicked: {
        ListView.view.currentIndex = index
        ListView.view.forceActiveFocus(Qt.MouseFocusReason)
    }

    background: Rectangle {
        color: row.hovered ? FinderLook.rowHoverColor : "transparent"

        Rectangle {
            visible: row.ListView.isCurrentItem
            width: 3
            height: parent.height
            color: FinderLook.accentColor
        }
    }
    contentItem: FittedText {
        text: row.text
        color: row.ListView.isCurrentItem ? FinderLook.strongTextColor : FinderLook.textColor
        font.weight: row.ListView.isCurrentItem ? Font.DemiBold : Font.Normal
        verticalAlignment: Text.AlignVCenter
    }

    FittedText {
        id: profile

        anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
        width: Math.min(implicitWidth, row.width / 2)
        text: row.item ? row.item.profile : ""
        color: row.ListView.isCurrentItem ? FinderLook.strongTextColor : FinderLook.dimTextColor
    }
}
