pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Corvin Filter Settings section: which filter is in each slot of the filter wheel. The IDs have no
// effect until they are applied; the wheel turns at once.
ModelBody {
    id: settings

    readonly property int _selected: camera ? camera.mfgCorvinFilterSettingsModel.selectedFilterIndex : -1
    readonly property bool _selecting: camera ? camera.mfgCorvinFilterSettingsModel.filterSelectionInProgress : false
    // Whether the operator has changed something since the last read and has not applied it.
    property bool _unapplied

    component ColumnHeading: PlainLabel {
        Layout.minimumHeight: Look.rowHeight
        opacity: enabled || settings.refreshing ? 1 : Look.disabledOpacity
        color: Look.headerTextColor
        verticalAlignment: Text.AlignVCenter
    }

    refreshing: camera ? camera.mfgCorvinFilterSettingsModel.refreshing : false
    hasRefreshed: camera ? camera.mfgCorvinFilterSettingsModel.hasRefreshed : false
    onReadsChanged: _unapplied = false

    RowGroup {
        Layout.maximumWidth: 720

        RowLayout {
            spacing: 12

            ColumnHeading {
                Layout.leftMargin: 24
                Layout.preferredWidth: 32
                text: "Slot"
                horizontalAlignment: Text.AlignRight
            }

            ColumnHeading {
                Layout.preferredWidth: 60
                text: "Filter ID"
                horizontalAlignment: Text.AlignRight
            }

            ColumnHeading {
                Layout.fillWidth: true
                text: "Filter Name"
            }

            ColumnHeading {
                Layout.preferredWidth: 88
                text: "Actions"
            }
        }

        Rectangle {
            implicitHeight: 1
            Layout.fillWidth: true
            color: Look.rectangleOutlineColor
        }

        // Keeps the height of the rows while they are hidden, so that the button does not move.
        Item {
            implicitHeight: Math.max(rows.implicitHeight, panel.implicitHeight)
            Layout.fillWidth: true

            ColumnLayout {
                id: rows

                width: parent.width
                visible: !settings.refreshing
                spacing: 4

                Repeater {
                    model: settings.camera ? settings.camera.mfgCorvinFilterSettingsModel.filterListModel : null

                    MfgFilterRow {
                        required property int index

                        Layout.fillWidth: true
                        names: settings.camera
                               ? settings.camera.mfgCorvinFilterSettingsModel.filterIDNameStringListModel : []
                        selected: index === settings._selected
                        selecting: settings._selecting
                        onEdited: settings._unapplied = true
                        onSelectRequested: settings.camera.mfgCorvinFilterSettingsModel.selectFilter(index)
                    }
                }
            }

            BusyPanel {
                id: panel

                visible: settings.refreshing
                width: parent.width
                height: parent.height
                text: "Loading Filters..."
                spinnerName: "filterTableBusy"
            }
        }

        WrappingButton {
            enabled: !settings.refreshing
            primary: settings._unapplied
            text: "Apply Filter IDs"
            onClicked: {
                settings.camera.mfgCorvinFilterSettingsModel.applyFilterIDs()
                settings._unapplied = false
            }
        }
    }
}
