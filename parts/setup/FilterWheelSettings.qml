import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the Filter Wheel Settings section.
SectionBody {
    id: settings

    // Whether the dialog opens when the wheel has turned to the filter to replace.
    property bool _dialogFollows

    function _replace(row: int) {
        _dialogFollows = true
        camera.setupFilterWheelSettingsModel.replaceFilter(row)
    }

    FilterWheelTable {
        Layout.maximumWidth: 720
        camera: settings.camera
        onReplaceRequested: row => settings._replace(row)
    }

    Connections {
        target: settings.camera ? settings.camera.setupFilterWheelSettingsModel : null
        enabled: settings._dialogFollows
        function onFilterReplacementSelectionInProgressChanged() {
            if (settings.camera.setupFilterWheelSettingsModel.filterReplacementSelectionInProgress)
                return
            settings._dialogFollows = false
            replaceDialog.open()
        }
    }

    LazyLoader {
        id: replaceDialog

        InformationDialog {
            //: Title of a dialog
            title: qsTr("Replace Filter")
            //: Instructions for the operator
            text: qsTr("To change the filter:\n\n 1. Remove the lens.\n 2. Remove the filter from the wheel.\n"
                       + " 3. Place the new the filter into the wheel.\n 4. Re-attach the lens.\n\n"
                       + " Click OK when you are done to refresh.")
            //: Closes a dialog after its work is done
            buttonText: qsTr("OK")
            primary: true
            onAccepted: settings.camera.setupFilterWheelSettingsModel.forceScan()
        }
    }
}
