// Asks for a new name for a lens state.
AddLensStateDialog {
    property string currentName

    function save(name: string) {
        tabModel.renameLensState(currentName, name)
    }

    //: Title of a dialog
    title: qsTr("Rename Lens State")
    presetName: currentName
}
