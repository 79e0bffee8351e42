import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The filters in the filter wheel, by slot. While they are read, a panel is shown in their place.
RowGroup {
    id: table

    required property ZvtCameraModel camera

    readonly property bool _refreshing: camera ? camera.setupFilterWheelSettingsModel.refreshing : false
    readonly property bool _selecting: camera ? camera.setupFilterWheelSettingsModel.filterSelectionInProgress : false
    readonly property bool _replacing: camera ? camera.setupFilterWheelSettingsModel.filterReplacementSelectionInProgress : false
    readonly property int _selected: camera ? camera.setupFilterWheelSettingsModel.selectedFilterIndex : -1
    readonly property bool _replaceable: camera ? camera.cameraCapabilitiesModel.hasReplaceableFilters : false
    readonly property int _actionWidth: 88

    // The operator wants to replace the filter in this row.
    signal replaceRequested(row: int)

    component ColumnHeading: PlainLabel {
        opacity: enabled || table._refreshing ? 1 : Look.disabledOpacity
        color: Look.headerTextColor
    }

    RowLayout {
        spacing: 12

        ColumnHeading {
            Layout.leftMargin: 24
            Layout.fillWidth: true
            //: Heading of a column: the names of filters
            text: qsTr("Filter")
        }

        ColumnHeading {
            Layout.preferredWidth: 28
            //: Heading of a column: the numbers of filters
            text: qsTr("ID")
            horizontalAlignment: Text.AlignRight
        }

        RowLayout {
            Layout.preferredWidth: table._replaceable ? 2 * table._actionWidth + 12 : table._actionWidth
            Layout.fillWidth: false

            ColumnHeading {
                Layout.fillWidth: true
                Layout.minimumHeight: Look.rowHeight
                //: Heading of a column: buttons
                text: qsTr("Actions")
                verticalAlignment: Text.AlignVCenter
            }

            GlyphButton {
                visible: table._replaceable
                glyph: Glyph.refresh
                //: Tool tip: the camera reads which filters are in the wheel
                toolTip: qsTr("Scan Filter Wheel")
                onClicked: table.camera.setupFilterWheelSettingsModel.forceScan()
            }
        }
    }

    Rectangle {
        implicitHeight: 1
        Layout.fillWidth: true
        color: Look.rectangleOutlineColor
    }

    BusyRows {
        busy: table._refreshing
        //: Shown while the camera reads the filters in the wheel
        busyText: qsTr("Scanning Filter Wheel...")
        spinnerName: "filterScanBusy"

        Repeater {
            model: table.camera ? table.camera.setupFilterWheelSettingsModel.filterListModel : null

            FilterWheelRow {
                required property int index

                selected: index === table._selected
                selecting: table._selecting
                replacing: table._replacing
                replaceable: table._replaceable
                actionWidth: table._actionWidth
                onSelectRequested: table.camera.setupFilterWheelSettingsModel.selectFilter(index)
                onReplaceRequested: table.replaceRequested(index)
            }
        }
    }
}
