pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The body of the Corvin Filter Settings section: which filter is in each slot of the filter wheel. The IDs have no
// effect until they are applied; the wheel turns at once.
ApplyBody {
    id: settings

    readonly property int _selected: camera ? camera.mfgCorvinFilterSettingsModel.selectedFilterIndex : -1
    readonly property bool _selecting: camera ? camera.mfgCorvinFilterSettingsModel.filterSelectionInProgress : false

    component ColumnHeading: PlainLabel {
        Layout.minimumHeight: Look.rowHeight
        opacity: enabled || settings.refreshing ? 1 : Look.disabledOpacity
        color: Look.headerTextColor
        verticalAlignment: Text.AlignVCenter
    }

    refreshing: camera ? camera.mfgCorvinFilterSettingsModel.refreshing : false

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

        BusyRows {
            busy: settings.refreshing
            busyText: "Loading Filters..."
            spinnerName: "filterTableBusy"

            Repeater {
                id: repeater

                model: settings.camera ? settings.camera.mfgCorvinFilterSettingsModel.filterListModel : null

                MfgFilterRow {
                    required property int index

                    names: settings.camera ? settings.camera.mfgCorvinFilterSettingsModel.filterIDNameStringListModel
                                           : []
                    selected: index === settings._selected
                    moving: settings._selecting
                    onEdited: settings.unapplied = true
                    onSelectRequested: settings.camera.mfgCorvinFilterSettingsModel.selectFilter(index)
                }
            }

            PlainLabel {
                visible: settings.reads > 0 && repeater.count === 0
                Layout.fillWidth: true
                Layout.minimumHeight: 2 * Look.rowHeight
                opacity: enabled ? 1 : Look.disabledOpacity
                text: "No filters available."
                color: Look.dimTextColor
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
        }

        ApplyButton {
            section: settings
            Layout.preferredWidth: implicitWidth
            text: "Apply Filter IDs"
            onApplied: settings.camera.mfgCorvinFilterSettingsModel.applyFilterIDs()
        }
    }
}
