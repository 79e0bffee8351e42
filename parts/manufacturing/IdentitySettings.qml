import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The body of the Camera Settings section: which of all models the camera is, and its serial number. The operator
// chooses a model in the table. Nothing has an effect on the camera until it is applied.
ApplyBody {
    id: settings

    readonly property bool _hasRefreshed: camera ? camera.mfgTabModel.hasRefreshed : false
    // The model in the current row of the table; null without one.
    readonly property var _row: _modelAt(table.currentIndex)

    // The ZvtModelModel in a row of the table; null without one.
    function _modelAt(row: int): var {
        return filter.filteredModels && row >= 0 ? filter.filteredModels.at(row) : null
    }

    // Moves the table to the row of the camera, or of what the operator has made of it. No row is current without one.
    function convertCameraInfoToIndexAndSetOnListView() {
        const row = camera ? _rowToApply() : -1
        if (row >= 0)
            _show(row)
        else
            table.currentIndex = -1
    }

    // The row of the model that would be applied; -1 if it is not in the table. The numbers alone do not tell models
    // apart that differ only in their names, Pleora boards or variants. They do if the camera has a name of its own.
    function _rowToApply(): int {
        const row = _rowWithName(filter.filteredModels)
        // If only the search hides the model, none of the others is it.
        if (row >= 0 || _rowWithName(filter.models) >= 0)
            return row
        return filter.getIndexBasedOnCameraInfo(camera.mfgTabModel.boardType, camera.mfgTabModel.cameraType,
                                                camera.mfgTabModel.cameraSubType, camera.mfgTabModel.detector,
                                                camera.mfgTabModel.readout)
    }

    // The row in a list of models with the name and the numbers to apply, of several the one with the Pleora board; -1
    // without one.
    function _rowWithName(models: var): int {
        const name = camera.mfgTabModel.model
        let found = -1
        for (let row = 0; row < models.size; ++row) {
            const item = models.at(row)
            if (item.name !== name || !_hasNumbers(item))
                continue
            if (item.pleoraBoard === camera.mfgTabModel.pleoraBoardType)
                return row
            if (found < 0)
                found = row
        }
        return found
    }

    function _hasNumbers(item: var): bool {
        return item.boardSet === camera.mfgTabModel.boardType && item.type === camera.mfgTabModel.cameraType
                && item.subType === camera.mfgTabModel.cameraSubType
                && item.detectorType === camera.mfgTabModel.detector && item.roicType === camera.mfgTabModel.readout
    }

    function _show(row: int) {
        camera.mfgTabModel.selectedFilteredIndex = row
        table.show(row)
    }

    // A new detector or readout changes the rows of the table, but the chosen model stays.
    function _choose(row: int) {
        const chosen = _modelAt(row)
        if (!camera || !chosen)
            return
        _show(row)
        camera.mfgTabModel.model = chosen.name
        camera.mfgTabModel.cameraType = chosen.type
        camera.mfgTabModel.cameraSubType = chosen.subType
        camera.mfgTabModel.detector = chosen.detectorType
        camera.mfgTabModel.readout = chosen.roicType
        camera.mfgTabModel.pleoraBoardType = chosen.pleoraBoard
        camera.mfgTabModel.variant = chosen.variant
        // The rows have changed before all of the values above were set.
        convertCameraInfoToIndexAndSetOnListView()
        unapplied = true
    }

    refreshing: camera ? camera.mfgTabModel.refreshing : false
    onReadsChanged: convertCameraInfoToIndexAndSetOnListView()
    onIsShownChanged: {
        if (isShown && _hasRefreshed)
            convertCameraInfoToIndexAndSetOnListView()
    }

    ZvtModelTable {
        id: filter

        boardTypeFilter: settings.camera ? settings.camera.mfgTabModel.boardType : -1
        detectorTypeFilter: settings.camera ? settings.camera.mfgTabModel.detector : -1
        readoutTypeFilter: settings.camera ? settings.camera.mfgTabModel.readout : -1
        textFilter: searchBox.text
        // Once for each new list, which signals its size for each of its rows.
        onFilteredModelsChanged: settings.convertCameraInfoToIndexAndSetOnListView()
    }

    RowGroup {
        // Keeps its height during a read, so that the table does not move.
        Item {
            implicitHeight: facts.implicitHeight
            Layout.fillWidth: true

            RowLayout {
                id: facts

                width: parent.width
                visible: !settings.refreshing && settings._hasRefreshed
                spacing: 8

                ModelFact {
                    heading: "Board Set"
                    value: settings._row ? settings._row.boardSetName : ""
                }

                ModelFact {
                    heading: "Detector"
                    value: settings._row ? settings._row.detectorTypeName : ""
                }

                ModelFact {
                    heading: "ROIC"
                    value: settings._row ? settings._row.roicTypeName : ""
                }
            }
        }

        TextBox {
            id: searchBox

            Layout.fillWidth: true
            enabled: !settings.refreshing || activeFocus
            name: "Search"
            placeholderText: "Search"
        }

        ModelTable {
            id: table

            Layout.fillWidth: true
            // The end of a read would discard a choice made during it.
            enabled: !settings.refreshing
            model: filter.filteredModels
            wasRead: settings._hasRefreshed
            onChosen: row => settings._choose(row)
        }

        SettingRow {
            id: serialRow

            labelWidth: 64
            heading: "Serial:"

            TextBox {
                Layout.fillWidth: true
                Layout.maximumWidth: 320
                enabled: !settings.refreshing || activeFocus
                name: serialRow.name
                // The camera's buffer has 255 bytes.
                maximumBytes: 254
                modelText: settings.camera ? settings.camera.mfgTabModel.serial : ""
                // The model has each key at once, so the next read replaces what was typed.
                onTextEdited: {
                    settings.camera.mfgTabModel.serial = text
                    settings.unapplied = true
                    revert()
                }
            }

            ApplyButton {
                section: settings
                enabled: !settings.refreshing && table.currentIndex >= 0
                Accessible.name: "Apply Camera Settings"
                onApplied: settings.camera.mfgTabModel.applyCameraSettings()
            }
        }
    }
}
