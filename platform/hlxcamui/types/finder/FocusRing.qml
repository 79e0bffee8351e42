import QtQuick

// The ring around the item with keyboard focus.
Rectangle {
    anchors { fill: parent; margins: -4 }
    radius: 6
    color: "transparent"
    border.width: 2
    border.color: FinderLook.accentColor
}
