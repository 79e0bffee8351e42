import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// The correction of one preset: its name, and buttons that show, make, save, load and unload it.
RowLayout {
    id: row

    required property int number
    required property ZvtCameraModel camera
    // Whether the names have been read.
    required property bool wasRead

    readonly property string nucName: _nucName()
    readonly property bool presetAllowsNewNuc: label.inUse
    readonly property SetupGeneralModel _general: camera ? camera.setupGeneralModel : null
    readonly property bool _exists: number === 0 || (camera ? camera.correctionTabModel.numPresets > number : false)
    readonly property bool _idle: camera ? !camera.correctionTabModel.refreshing : false
    readonly property bool _hasNuc: nucName !== ""

    signal infoRequested
    signal newRequested
    signal saveRequested
    signal loadRequested

    function _nucName(): string {
        if (!camera)
            return ""
        switch (number) {
        case 0:
            return camera.correctionTabModel.nucNamePS0
        case 1:
            return camera.correctionTabModel.nucNamePS1
        case 2:
            return camera.correctionTabModel.nucNamePS2
        default:
            return camera.correctionTabModel.nucNamePS3
        }
    }

    // Whether a factory calibration is applied to the preset. No binding can use this: the model signals the changes of
    // presets 1 to 3 as those of preset 0.
    function isCalibrated(): bool {
        if (!camera)
            return false
        switch (number) {
        case 0:
            return camera.correctionTabModel.calLoadedPS0
        case 1:
            return camera.correctionTabModel.calLoadedPS1
        case 2:
            return camera.correctionTabModel.calLoadedPS2
        default:
            return camera.correctionTabModel.calLoadedPS3
        }
    }

    component NucButton: GlyphButton {
        visible: row._exists
        Accessible.name: toolTip + " " + row.number
    }

    spacing: 8
    Layout.fillWidth: true

    CorrectionTabPresetNumberLabel {
        id: label

        presetNumber: row.number
        setupGeneralModel: row._general && row._general.hasRefreshed ? row._general : null
        //: Accessible name; %1 is a number
        Accessible.name: qsTr("Preset %1").arg(row.number)
    }

    PlainLabel {
        id: nameLabel

        Layout.fillWidth: true
        Layout.minimumHeight: Look.rowHeight
        visible: row._exists
        // The gray text would be unreadable if it was dimmed.
        opacity: enabled || !row._hasNuc ? 1 : Look.disabledOpacity
        //: Instead of the name of a correction
        text: row._hasNuc ? row.nucName : row.wasRead ? qsTr("No NUC Loaded") : ""
        color: row._hasNuc ? Look.textColor : Look.dimTextColor
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter

        //: Accessible name; %1 is the number of a preset
        Accessible.name: qsTr("NUC %1").arg(row.number)
        Accessible.description: text

        HoverHandler {
            onHoveredChanged: Hint.show(nameLabel, hovered && nameLabel.truncated, row.nucName)
        }
    }

    NucButton {
        enabled: row._hasNuc
        glyph: Glyph.info
        //: Tool tip
        toolTip: qsTr("Show NUC Info")
        onClicked: row.infoRequested()
    }

    NucButton {
        enabled: row.presetAllowsNewNuc && row._idle
        glyph: Glyph.add
        //: Tool tip
        toolTip: qsTr("Perform New NUC")
        onClicked: row.newRequested()
    }

    NucButton {
        enabled: row._hasNuc && row._idle
        glyph: Glyph.save
        //: Tool tip
        toolTip: qsTr("Save Current NUC")
        onClicked: row.saveRequested()
    }

    NucButton {
        enabled: row._idle
        glyph: Glyph.load
        //: Tool tip
        toolTip: qsTr("Load Existing NUC")
        onClicked: row.loadRequested()
    }

    NucButton {
        enabled: row._hasNuc && row._idle
        glyph: Glyph.eject
        //: Tool tip
        toolTip: qsTr("Unload Current NUC")
        onClicked: row.camera.correctionTabModel.unloadNuc(row.number)
    }
}
