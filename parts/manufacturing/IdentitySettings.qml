import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The body of the Camera Settings section: which of all models the camera is, and its serial number. The operator
// chooses a model in the table. Nothing has an effect on the camera until it is applied.
ApplyBody {
    id: settings

    // The model in the current row of the table; null without one.
    readonly property var _row: _modelAt(table.currentIndex)

    // The ZvtModelModel in a row of the table; null without one.
    function _modelAt(row: int): var {
        return filter.filteredModels && row >= 0 ? filter.filteredModels.at(row) : null
    }

    // Moves the table to the row of the camera, or of what the operator has made of it.
    function convertCameraInfoToIndexAndSetOnListView() {
        if (!camera || filter.filteredModels.size === 0)
            return
        const row = filter.getIndexBasedOnCameraInfo(camera.mfgTabModel.boardType, camera.mfgTabModel.cameraType,
                                                     camera.mfgTabModel.cameraSubType, camera.mfgTabModel.detector,
                                                     camera.mfgTabModel.readout)
        if (row >= 0)
            _show(row)
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
        unapplied = true
    }

    // A property of the model in the current row, for the operator.
    component Fact: Rectangle {
        id: fact

        required property string heading
        required property string value

        implicitHeight: 48
        Layout.fillWidth: true
        Layout.preferredWidth: 1
        radius: Look.controlRadius
        color: Look.cardColor
        border.color: Look.rectangleOutlineColor

        Accessible.role: Accessible.StaticText
        Accessible.name: heading
        Accessible.description: value

        PlainLabel {
            x: 12
            y: 5
            Accessible.ignored: true
            text: fact.heading
            color: Look.headerTextColor
            font.pixelSize: Look.hintSize
        }

        PlainLabel {
            x: 12
            y: 23
            width: fact.width - 24
            Accessible.ignored: true
            text: fact.value
            color: Look.strongTextColor
            elide: Text.ElideRight
        }
    }

    refreshing: camera ? camera.mfgTabModel.refreshing : false
    hasRefreshed: camera ? camera.mfgTabModel.hasRefreshed : false
    onReadsChanged: convertCameraInfoToIndexAndSetOnListView()
    onIsShownChanged: {
        if (isShown && hasRefreshed)
            convertCameraInfoToIndexAndSetOnListView()
    }

    ZvtModelTable {
        id: filter

        boardTypeFilter: settings.camera ? settings.camera.mfgTabModel.boardType : -1
        detectorTypeFilter: settings.camera ? settings.camera.mfgTabModel.detector : -1
        readoutTypeFilter: settings.camera ? settings.camera.mfgTabModel.readout : -1
        textFilter: searchBox.text
        // Once for each new list, which signals its size for each of its rows.
        onFilteredModelsChanged: {
            table.currentIndex = -1
            settings.convertCameraInfoToIndexAndSetOnListView()
        }
    }

    RowGroup {
        // Keeps its height during a read, so that the table does not move.
        Item {
            implicitHeight: facts.implicitHeight
            Layout.fillWidth: true

            RowLayout {
                id: facts

                width: parent.width
                visible: !settings.refreshing && settings.hasRefreshed
                spacing: 8

                Fact {
                    heading: "Board Set"
                    value: settings._row ? settings._row.boardSetName : ""
                }

                Fact {
                    heading: "Detector"
                    value: settings._row ? settings._row.detectorTypeName : ""
                }

                Fact {
                    heading: "ROIC"
                    value: settings._row ? settings._row.roicTypeName : ""
                }
            }
        }

        TextBox {
            id: searchBox

            Layout.fillWidth: true
            name: "Search"
            placeholderText: "Search"
        }

        ModelTable {
            id: table

            Layout.fillWidth: true
            model: filter.filteredModels
            wasRead: settings.hasRefreshed
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
