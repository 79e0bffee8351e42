import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The names of all filters that the camera knows, in fields. Shows a spinner while they are read.
ColumnLayout {
    id: table

    required property ZvtCameraModel camera

    readonly property bool _refreshing: camera ? camera.editFilterNamesModel.refreshing : false
    readonly property bool _hasRead: camera ? camera.editFilterNamesModel.hasRefreshed && !_refreshing : false
    readonly property int _idWidth: 24
    readonly property int _actionWidth: 128

    // Enter was pressed in a field.
    signal confirmed

    function _edit(index: int) {
        const row = rows.itemAt(index) as FilterNameRow
        if (row)
            row.edit()
    }

    // Scrolls so that the row with the focus is visible. Does nothing if the item got the focus by mouse, so that nothing
    // moves under the pointer.
    function _bringIntoView(focusItem: Item) {
        let row = focusItem
        while (row && !(row instanceof FilterNameRow))
            row = row.parent
        if (!row || focusItem.focusReason === Qt.MouseFocusReason)
            return
        const spare = (scroller.height - row.height) / 2
        const margin = Math.min(Look.rowHeight, spare)
        const lowest = Math.max(scroller.contentY, row.y + row.height + margin - scroller.height)
        const end = scroller.contentHeight - scroller.height
        scroller.contentY = Math.max(0, Math.min(row.y - margin, lowest, end))
    }

    component ColumnHeading: PlainLabel {
        color: Look.headerTextColor
    }

    spacing: Look.rowSpacing
    Window.onActiveFocusItemChanged: _bringIntoView(Window.activeFocusItem)

    RowLayout {
        spacing: 12

        ColumnHeading {
            Layout.preferredWidth: table._idWidth
            //: Heading of a column: the numbers of filters
            text: qsTr("ID")
            horizontalAlignment: Text.AlignRight
        }

        ColumnHeading {
            Layout.fillWidth: true
            //: Heading of a column: the names of filters
            text: qsTr("Name")
        }

        ColumnHeading {
            // The list has a scroll bar at its right.
            Layout.preferredWidth: table._actionWidth + 12
            //: Heading of a column: buttons
            text: qsTr("Actions")
        }
    }

    DialogScroller {
        id: scroller

        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: 320

        Repeater {
            id: rows

            model: table.visible && table._hasRead ? table.camera.editFilterNamesModel.filterListModel : null

            FilterNameRow {
                required property int index

                Layout.fillWidth: true
                idWidth: table._idWidth
                actionWidth: table._actionWidth
                onConfirmed: table.confirmed()
                onStepped: by => table._edit(index + by)
            }
        }

        Loader {
            parent: scroller
            anchors.centerIn: parent
            active: table._refreshing && table.visible
            sourceComponent: Spinner {
                objectName: "filterNamesBusy"
            }
        }
    }
}
