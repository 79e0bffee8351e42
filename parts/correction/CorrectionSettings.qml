pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import zvt.rows

// The body of the Correction page.
SectionBody {
    id: settings

    // The size of the page, which limits that of dialogs.
    property size pageSize

    readonly property bool _refreshing: camera ? camera.correctionTabModel.refreshing : false
    readonly property bool _hasRefreshed: camera ? camera.correctionTabModel.hasRefreshed : false
    property bool _wasRead

    // Emitted when the main page must be blocked (true) or released (false): it is blocked while the wizard is open and
    // the camera connected.
    signal pageBlocked(blocked: bool)

    function _updateRead() {
        if (_hasRefreshed)
            _wasRead = true
    }

    on_HasRefreshedChanged: _updateRead()
    Component.onCompleted: _updateRead()

    RowGroup {
        Layout.alignment: Qt.AlignTop
        Layout.preferredWidth: 1

        NucActions {
            busy: settings._refreshing
            onListRequested: dialogs.manage()
            onOptionsRequested: dialogs.showOptions()
            onRefreshRequested: settings.camera.correctionTabModel.refresh()
        }

        Repeater {
            model: 4

            PresetNucRow {
                required property int index

                number: index
                camera: settings.camera
                wasRead: settings._wasRead
                onInfoRequested: dialogs.showInfo(nucName)
                onNewRequested: dialogs.makeNuc(number, nucName, isCalibrated())
                onSaveRequested: dialogs.save(number, nucName)
                onLoadRequested: dialogs.load(number)
            }
        }
    }

    NucUseRows {
        Layout.alignment: Qt.AlignTop
        Layout.preferredWidth: 1
        camera: settings.camera
        enabled: settings._hasRefreshed || settings.beingEdited
    }

    CorrectionDialogs {
        id: dialogs

        visible: false
        camera: settings.camera
        pageSize: settings.pageSize
        onPageBlocked: blocked => settings.pageBlocked(blocked)
    }
}
