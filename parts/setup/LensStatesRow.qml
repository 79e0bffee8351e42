import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The named lens settings that the camera keeps. Choosing one moves the lens.
SettingRow {
    id: row

    required property ZvtCameraModel camera

    readonly property bool _hasStates: camera ? camera.setupTabModel.hasAtLeastOneLensState : false
    readonly property bool _modified: camera ? _isModified(camera.setupTabModel.lensStateNames) : false

    // A refresh of the lens resets the property without a signal and then publishes the list, so `names` makes the
    // binding read it again.
    function _isModified(names: var): bool {
        return camera.setupTabModel.selectedLensStateComponentsModifiedNotSaved
    }

    function _dialogProperties(): var {
        return { tabModel: camera ? camera.setupTabModel : null }
    }

    //: Heading of a choice
    heading: qsTr("Lens States:")

    Choice {
        id: box

        Accessible.name: row.name
        model: row.camera ? row.camera.setupTabModel.lensStateNames : []
        currentIndex: row.camera ? row.camera.setupTabModel.selectedLensStateIndex : -1
        //: In place of the name of a lens state
        displayText: count === 0 ? qsTr("No lens states") : currentText + (row._modified ? "*" : "")
        onActivated: index => {
            row.camera.setupTabModel.selectedLensStateIndex = index
            row.camera.setupTabModel.loadLensState(currentText)
        }
    }

    GlyphButton {
        glyph: Glyph.add
        //: Tool tip
        toolTip: qsTr("Add New Lens State Using Current Settings")
        onClicked: addDialog.open()
    }

    GlyphButton {
        enabled: row._hasStates && !row._modified
        glyph: Glyph.pencil
        //: Tool tip
        toolTip: qsTr("Rename Lens State")
        onClicked: {
            renameDialog.instance().currentName = box.currentText
            renameDialog.open()
        }
    }

    GlyphButton {
        enabled: row._hasStates
        glyph: Glyph.save
        //: Tool tip
        toolTip: qsTr("Save Changes To Lens State")
        onClicked: row.camera.setupTabModel.saveLensState(box.currentText)
    }

    GlyphButton {
        enabled: row._hasStates
        glyph: Glyph.refresh
        //: Tool tip
        toolTip: qsTr("Reload Lens State (Discard Changes)")
        onClicked: row.camera.setupTabModel.loadLensState(box.currentText)
    }

    GlyphButton {
        enabled: row._hasStates && !row._modified
        glyph: Glyph.cross
        //: Tool tip
        toolTip: qsTr("Delete Lens State")
        onClicked: {
            deleteDialog.instance().name = box.currentText
            deleteDialog.open()
        }
    }

    LazyLoader {
        id: addDialog

        file: "qrc:/zvt/dialogs/AddLensStateDialog.qml"
        initialProperties: row._dialogProperties()
    }

    LazyLoader {
        id: renameDialog

        file: "qrc:/zvt/dialogs/RenameLensStateDialog.qml"
        initialProperties: row._dialogProperties()
    }

    LazyLoader {
        id: deleteDialog

        file: "qrc:/zvt/dialogs/ConfirmDeleteLensStateDialog.qml"
        initialProperties: row._dialogProperties()
    }
}
