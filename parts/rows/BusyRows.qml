import QtQuick
import QtQuick.Layouts

// A column of rows. While these are read, a panel with a spinner and a text is shown in their place. The column keeps
// the height of the rows meanwhile, so that what is below it does not move.
Item {
    id: group

    default property alias rows: column.data
    property bool busy
    property alias busyText: panel.text
    // The object name of the spinner.
    property alias spinnerName: panel.spinnerName

    implicitHeight: Math.max(column.implicitHeight, panel.implicitHeight)
    Layout.fillWidth: true

    ColumnLayout {
        id: column

        width: parent.width
        visible: !group.busy
        spacing: 4
    }

    BusyPanel {
        id: panel

        visible: group.busy
        width: parent.width
        height: parent.height
    }
}
